// Handles the loss of the display. No toolkit can use another display afterwards, so the program
// starts again, and loads the toolkit with the next window. The toolkit would call exit() at any
// point, which destroys objects that other threads use; the desktop's theme plugin ends the process
// without a message.

#pragma once

#include <functional>

#include "platform/log.h"

namespace quillmar {

/// From now on a call of exit(), or the loss of the X server, writes a line and calls `restart`,
/// until expectExit(). If that is empty or returns, the process ends at once with status 1. Call it
/// after the toolkit has installed its own handlers.
void watchForUnexpectedExit(LogLine log, std::function<void()> restart);

/// From now on exit() works as usual.
void expectExit();

}  // namespace quillmar
