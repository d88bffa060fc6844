// The resident program, which shows the icon in the panel.

#pragma once

#include "cli/arguments.h"
#include "cli/console.h"
#include "platform/environment.h"

namespace quillmar {

/// Runs the program until it quits, then ends the process; background commands keep running.
/// Returns only if the program cannot start, after printing the reason, or if another instance is
/// running. That instance then opens the files and links; without any, it shows its menu if no
/// panel shows its icon.
ExitStatus runResidentProgram(const ResidentInvocation& invocation, const Environment& environment,
                              Console& console);

}  // namespace quillmar
