// The program that stays in the panel.

#pragma once

#include "cli/console.h"
#include "platform/environment.h"

namespace quillmar {

/// Runs the program until it is told to quit, then ends the process; background commands keep
/// running. Returns only if the program cannot start, after printing the reason, or if another
/// instance is running; that instance then shows its menu if its icon is not visible anywhere.
ExitStatus runResidentProgram(const Environment& environment, Console& console);

}  // namespace quillmar
