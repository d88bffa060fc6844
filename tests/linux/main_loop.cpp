#include "tests/linux/main_loop.h"

#include <glib.h>
#include <gtest/gtest.h>

namespace quillmar {

void runMainLoopUntil(const std::function<bool()>& done) {
  bool late = false;
  const auto markLate = [](gpointer data) -> gboolean {
    *static_cast<bool*>(data) = true;
    return G_SOURCE_CONTINUE;
  };
  const guint deadline = g_timeout_add_seconds(60, markLate, &late);
  while (!late && !done()) g_main_context_iteration(nullptr, TRUE);
  g_source_remove(deadline);
  EXPECT_FALSE(late) << "The effect that was waited for did not come.";
}

}  // namespace quillmar
