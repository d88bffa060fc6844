// The sub-commands that only read settings and files. They need no display and write no settings.

#pragma once

#include "cli/arguments.h"
#include "cli/console.h"
#include "config/settings_manager.h"
#include "platform/file_system.h"

namespace quillmar {

/// Prints the folders and their items, or a JSON array of the items. What has no id, or an empty
/// one, is shown without.
ExitStatus listItems(const ListInvocation& invocation, const SettingsManager& settings,
                     Console& console);

/// Says of each file that does not decode why; "-" is standard input.
ExitStatus checkFiles(const CheckInvocation& invocation, const FileSystem& files, Console& console);

/// The item that `name` means: the one with that id, else the only one with that title. The error
/// says that there is none, or which ids the title could mean. Precondition: `name` is not empty.
Result<MenuItem> itemNamed(const std::string& name, const SettingsManager& settings);

}  // namespace quillmar
