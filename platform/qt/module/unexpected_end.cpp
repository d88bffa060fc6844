#include "platform/qt/module/unexpected_end.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

#include <X11/Xlib.h>

namespace quillmar {

namespace {

/// Empty while the end is expected. Never destroyed: exit() destroys what is static.
std::unique_ptr<LogLine>& watcher() {
  static auto& log = *new std::unique_ptr<LogLine>;
  return log;
}

void endAtOnce() {
  if (!watcher()) return;
  (*watcher())("Quillmar ends, because the display that shows its windows has gone away.");
  flushStandardOutputLog();
  std::fflush(nullptr);
  std::_Exit(EXIT_FAILURE);
}

int connectionBroke(Display* /*display*/) {
  endAtOnce();
  return 0;
}

}  // namespace

void watchForUnexpectedEnd(LogLine log) {
  watcher() = std::make_unique<LogLine>(std::move(log));
  [[maybe_unused]] static const bool isInstalled = std::atexit(endAtOnce) == 0;
  XSetIOErrorHandler(connectionBroke);
}

void expectEnd() {
  watcher().reset();
}

}  // namespace quillmar
