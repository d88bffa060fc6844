// The end of the program that comes about when its display goes away. The toolkit calls exit() in
// the middle of whatever is going on, which would destroy objects that other threads use; the
// desktop's own theme in it ends the process without a word.

#pragma once

#include "platform/log.h"

namespace quillmar {

/// From now on a call of exit(), and an X server that is gone, write a line and end the process at
/// once, with status 1, until expectEnd(). Called after the toolkit has set up handlers of its own.
void watchForUnexpectedEnd(LogLine log);

/// From now on exit() does what it usually does.
void expectEnd();

}  // namespace quillmar
