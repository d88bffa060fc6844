// Handles the loss of the X display. The toolkit cannot connect to another display, so the program
// starts again, and loads the toolkit with the next window. Otherwise the toolkit would call exit()
// at any point, which destroys objects that other threads use, or the desktop's theme plugin would
// end the process without a message.

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
