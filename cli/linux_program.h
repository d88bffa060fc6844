// The program put together from the services of a Linux desktop.

#pragma once

#include "cli/arguments.h"
#include "cli/console.h"
#include "config/settings_manager.h"
#include "platform/environment.h"

namespace quillmar {

/// Lives in the panel until it is told to quit, and ends the process then, whatever background
/// commands are still running. Returns only when it cannot start, having said why, or when another
/// instance is running: that one shows its menu if its icon is to be seen nowhere.
ExitStatus liveInPanel(const Environment& environment, Console& console);

/// Has the running instance show its menu; says so when that is not possible.
ExitStatus showMenu(const Environment& environment, Console& console);

/// Runs one item in this process, with the desktop's clipboard and notifications reached through
/// the instance in the panel, if there is one.
ExitStatus runItemFromTerminal(const RunInvocation& invocation, const Environment& environment,
                               SettingsManager& settings, Console& console);

}  // namespace quillmar
