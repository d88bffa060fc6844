// The environment that commands run in: this program's own, with a PATH that also finds what users
// install beside the system.

#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>

#include "platform/environment.h"
#include "platform/file_system.h"

namespace quillmar {

/// Directories put in front of PATH when they exist and are not in it yet, in this order.
inline constexpr std::array<std::string_view, 6> extraPathDirectories = {
    "/opt/homebrew/bin", "/opt/homebrew/sbin", "/usr/local/bin",
    "/usr/local/sbin",   "~/.local/bin",       "~/bin"};

/// The variables for a child process. Looks at the file system, so a directory that appears later
/// is found by the next command.
std::map<std::string, std::string> augmentedEnvironment(const Environment& environment,
                                                        const std::string& homeDirectory,
                                                        const FileSystem& files);

}  // namespace quillmar
