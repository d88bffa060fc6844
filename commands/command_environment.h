// The environment of commands: this program's environment, with additional directories in PATH.

#pragma once

#include <array>
#include <map>
#include <string>
#include <string_view>

#include "platform/environment.h"
#include "platform/file_system.h"

namespace quillmar {

/// Directories that are prepended to PATH, in this order, if they exist and are not in it yet.
inline constexpr std::array<std::string_view, 6> extraPathDirectories = {
    "/opt/homebrew/bin", "/opt/homebrew/sbin", "/usr/local/bin",
    "/usr/local/sbin",   "~/.local/bin",       "~/bin"};

/// The environment variables for a child process. Checks the file system at every call, so the next
/// command finds directories that were created later.
std::map<std::string, std::string> augmentedEnvironment(const Environment& environment,
                                                        const std::string& homeDirectory,
                                                        const FileSystem& files);

}  // namespace quillmar
