// Random identifiers.

#pragma once

#include <string>

namespace quillmar {

/// A new random UUID (version 4, RFC 9562) in canonical form: 36 characters, upper-case hexadecimal
/// in groups of 8-4-4-4-12. Any thread.
std::string makeUuid();

}  // namespace quillmar
