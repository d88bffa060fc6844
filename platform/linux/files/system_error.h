// The system's error numbers in words.

#pragma once

#include <string>

namespace quillmar {

/// What the error number means, in English whatever the locale is: "No space left on device". Any
/// thread.
std::string systemErrorText(int number);

}  // namespace quillmar
