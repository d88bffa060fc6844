// URLs of files. Any thread.

#pragma once

#include <string>

#include "platform/result.h"

namespace quillmar {

/// The file URL of a path. A relative path starts at the current folder of the process. Does not
/// look at the file. The error is a full sentence.
Result<std::string> fileUrl(const std::string& path);

}  // namespace quillmar
