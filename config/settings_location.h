// Where the settings file is.

#pragma once

#include <string>
#include <string_view>

#include "platform/environment.h"
#include "platform/file_system.h"
#include "platform/user_directories.h"

namespace quillmar {

/// Names the directory of the settings file; empty counts as not set.
inline constexpr std::string_view settingsDirectoryVariable = "QUILLMAR_SETTINGS_DIR";

/// Path of the settings file: in the directory named by the variable, used unchanged, or else in
/// the folder "Quillmar" of the first application support directory. Aborts if there is neither.
/// Creates the directory and ignores a failure to do so.
std::string settingsFilePath(const Environment& environment, const UserDirectories& userDirectories,
                             FileSystem& files);

}  // namespace quillmar
