// Error messages for files and programs, shared by all backends. Any thread.

#pragma once

#include <cstdint>
#include <string>
#include <string_view>

#include "platform/result.h"

namespace quillmar {

/// The path in typographic quotes, as one line of valid UTF-8. Control characters are escaped and
/// invalid bytes replaced.
std::string quotedPath(std::string_view path);

/// "The file “PATH” could not be DONE: REASON.", with "read" or "written" for DONE, for example.
Error fileError(std::string_view path, std::string_view done, std::string_view reason,
                ErrorKind kind = ErrorKind::other);

/// The same for a folder.
Error folderError(std::string_view path, std::string_view done, std::string_view reason,
                  ErrorKind kind = ErrorKind::other);

/// Why an existing folder is not private; see FileSystem::createPrivateDirectory().
inline constexpr std::string_view symbolicLinkReason = "It is a symbolic link";
inline constexpr std::string_view foreignFolderReason = "It belongs to another user";

/// "Its permissions are 0755 instead of 0700".
std::string openFolderReason(std::uint32_t permissions);

/// The error for a file that is larger than maximumFileSize.
Error fileTooLarge(std::string_view path);

/// "The program “PATH” could not be launched: REASON."
Error launchError(std::string_view path, std::string_view reason);

}  // namespace quillmar
