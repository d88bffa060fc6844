// The end of the program that the toolkit brings about when its display goes away: it calls exit()
// in the middle of whatever is going on, which would destroy objects that other threads use.

#pragma once

#include "platform/log.h"

namespace quillmar {

/// From now on a call of exit() writes a line and ends the process at once, with status 1, until
/// expectEnd().
void watchForUnexpectedEnd(LogLine log);

/// From now on exit() does what it usually does.
void expectEnd();

}  // namespace quillmar
