// The sub-commands that only read settings and files. They need no display and write no settings.

#pragma once

#include <vector>

#include "cli/arguments.h"
#include "cli/console.h"
#include "config/settings_manager.h"
#include "platform/file_system.h"
#include "shortcuts/unregistered_hot_key.h"

namespace quillmar {

/// Prints the folders and their items, or a JSON array of the items. Omits empty ids; the list
/// shows "-" instead. Marks the items whose hot key is among `unregistered`, by their ids, or by
/// their titles if they have none.
ExitStatus listItems(const ListInvocation& invocation, const SettingsManager& settings,
                     const std::vector<UnregisteredHotKey>& unregistered, Console& console);

/// Prints an error for each file that cannot be decoded; "-" is standard input.
ExitStatus checkFiles(const CheckInvocation& invocation, const FileSystem& files, Console& console);

/// The item with the id `name`, or else the only item with that title. The error says that there is
/// none, or lists the ids of several. Precondition: `name` is not empty.
Result<MenuItem> itemNamed(const std::string& name, const SettingsManager& settings);

}  // namespace quillmar
