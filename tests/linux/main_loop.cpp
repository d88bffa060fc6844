#include "tests/linux/main_loop.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace quillmar {

namespace {

constexpr guint failureSeconds = 60;

}  // namespace

bool runMainLoopUntil(const std::function<bool()>& done) {
  bool late = false;
  const guint deadline = g_timeout_add_seconds(
      failureSeconds,
      [](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_CONTINUE;
      },
      &late);
  while (!done() && !late) g_main_context_iteration(nullptr, true);
  g_source_remove(deadline);
  EXPECT_FALSE(late) << "The effect that was waited for did not come.";
  return !late;
}

void runMainLoopWhileReady() {
  while (g_main_context_iteration(nullptr, false)) {
  }
}

}  // namespace quillmar
