#include "platform/qt/module/unexpected_exit.h"

#include <cstdio>
#include <cstdlib>
#include <memory>
#include <utility>

#include <X11/Xlib.h>

namespace quillmar {

namespace {

struct Watcher {
  LogLine log;
  std::function<void()> restart;
};

/// Empty while an exit is expected. Never destroyed: exit() destroys what is static.
std::unique_ptr<Watcher>& watcher() {
  static auto& instance = *new std::unique_ptr<Watcher>;
  return instance;
}

void restartOrExit() {
  if (!watcher()) return;
  const Watcher& watching = *watcher();
  watching.log(watching.restart
                   ? "Quillmar starts again because the connection to the display was lost."
                   : "Quillmar quits because the connection to the display was lost.");
  flushStandardOutputLog();
  std::fflush(nullptr);
  if (watching.restart) watching.restart();
  std::_Exit(EXIT_FAILURE);
}

int connectionBroke(Display* /*display*/) {
  restartOrExit();
  return 0;
}

}  // namespace

void watchForUnexpectedExit(LogLine log, std::function<void()> restart) {
  watcher() = std::make_unique<Watcher>(Watcher{std::move(log), std::move(restart)});
  [[maybe_unused]] static const bool isInstalled = std::atexit(restartOrExit) == 0;
  XSetIOErrorHandler(connectionBroke);
}

void expectExit() {
  watcher().reset();
}

}  // namespace quillmar
