// The sentences in which failures of files and programs are told, the same from every backend. Any
// thread.

#pragma once

#include <string>
#include <string_view>

#include "platform/result.h"

namespace quillmar {

/// The path between typographic quotes, made UTF-8 whatever its bytes are.
std::string quotedPath(std::string_view path);

/// "The file “PATH” could not be DONE: REASON.", with "read" or "written" for DONE, for example.
Error fileError(std::string_view path, std::string_view done, std::string_view reason);

/// The same of a folder.
Error folderError(std::string_view path, std::string_view done, std::string_view reason);

/// "The program “PATH” could not be launched: REASON."
Error launchError(std::string_view path, std::string_view reason);

}  // namespace quillmar
