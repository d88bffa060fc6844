#include "platform/qt/module/unexpected_end.h"

#include <cstdio>
#include <cstdlib>
#include <utility>

namespace quillmar {

namespace {

/// Null while the end is expected. Never destroyed: exit() destroys what is static.
LogLine* watcher = nullptr;

void endAtOnce() {
  if (watcher == nullptr) return;
  (*watcher)("Quillmar ends, because the display that shows its windows has gone away.");
  std::fflush(nullptr);
  std::_Exit(EXIT_FAILURE);
}

}  // namespace

void watchForUnexpectedEnd(LogLine log) {
  static const bool isInstalled = std::atexit(endAtOnce) == 0;
  if (isInstalled) watcher = new LogLine(std::move(log));
}

void expectEnd() {
  watcher = nullptr;
}

}  // namespace quillmar
