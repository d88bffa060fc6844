// The system's error numbers, as text and as kinds. Any thread.

#pragma once

#include <string>

#include "platform/result.h"

namespace quillmar {

/// The meaning of the error number, in English in every locale: "No space left on device".
std::string systemErrorText(int number);

/// The kind of the error number.
ErrorKind systemErrorKind(int number);

}  // namespace quillmar
