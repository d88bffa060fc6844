#include "platform/qt/module/unexpected_exit.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

#include <X11/Xlib.h>

namespace quillmar {

namespace {

/// Empty while an exit is expected. Never destroyed: exit() destroys what is static.
std::unique_ptr<LogLine>& watcher() {
  static auto& log = *new std::unique_ptr<LogLine>;
  return log;
}

void exitAtOnce() {
  if (!watcher()) return;
  (*watcher())("Quillmar quits because the connection to the display was lost.");
  flushStandardOutputLog();
  std::fflush(nullptr);
  std::_Exit(EXIT_FAILURE);
}

int connectionBroke(Display* /*display*/) {
  exitAtOnce();
  return 0;
}

}  // namespace

void watchForUnexpectedExit(LogLine log) {
  watcher() = std::make_unique<LogLine>(std::move(log));
  [[maybe_unused]] static const bool isInstalled = std::atexit(exitAtOnce) == 0;
  XSetIOErrorHandler(connectionBroke);
}

void expectExit() {
  watcher().reset();
}

}  // namespace quillmar
