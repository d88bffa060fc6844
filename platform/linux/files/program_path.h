// Finding programs. Any thread.

#pragma once

#include <optional>
#include <string>

#include "platform/environment.h"
#include "platform/file_system.h"

namespace quillmar {

/// The path of an executable program. A name without a slash is looked up in PATH; any other is a
/// path itself. Absent if there is no such program.
std::optional<std::string> findProgram(const std::string& name, const Environment& environment,
                                       const FileSystem& files);

}  // namespace quillmar
