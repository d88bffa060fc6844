// The sub-commands that need services of the system: the settings folder, processes, or the running
// instance.

#pragma once

#include "cli/arguments.h"
#include "cli/console.h"
#include "platform/environment.h"

namespace quillmar {

ExitStatus listItemsFromTerminal(const ListInvocation& invocation, const Environment& environment,
                                 Console& console);

ExitStatus printSettingsFile(const Environment& environment, Console& console);

ExitStatus checkFilesFromTerminal(const CheckInvocation& invocation, Console& console);

/// Makes the running instance show its menu; prints the reason if that fails.
ExitStatus showMenu(const Environment& environment, Console& console);

/// Runs one item in this process. Uses the running instance, if there is one, to set the clipboard
/// and to show notifications.
ExitStatus runItemFromTerminal(const RunInvocation& invocation, const Environment& environment,
                               Console& console);

}  // namespace quillmar
