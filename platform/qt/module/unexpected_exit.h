// Handles the loss of the display. The toolkit would call exit() at any point, which destroys
// objects that other threads use; the desktop's theme plugin ends the process without a message.

#pragma once

#include "platform/log.h"

namespace quillmar {

/// From now on a call of exit(), or the loss of the X server, writes a line and ends the process at
/// once with status 1, until expectExit(). Call it after the toolkit has installed its own
/// handlers.
void watchForUnexpectedExit(LogLine log);

/// From now on exit() works as usual.
void expectExit();

}  // namespace quillmar
