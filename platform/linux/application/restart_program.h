// Starts the program again in its own process.

#pragma once

#include "platform/environment.h"

namespace quillmar {

/// Replaces the program in this process by a new start of it, without arguments and with this
/// environment. The process keeps its id, its standard streams and its children; all else is lost.
/// Returns only if that fails, or if the program is already shutting down. Any thread.
void restartProgram(const Environment& environment);

}  // namespace quillmar
