// Locates a syntax error. The parser of documents only reports that there is one; this slower
// second pass reports its position, what was expected and what was found. Any thread.

#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/result.h"

namespace quillmar {

/// Maximum nesting of objects and arrays.
inline constexpr std::size_t maximumJsonDepth = 1024;

/// Called with the source text of a number.
using NumberHandler = std::function<void(std::string_view number)>;

/// The first error of the text; absent if it is valid JSON (RFC 8259, UTF-8 without a byte-order
/// mark, nesting up to maximumJsonDepth, no lone surrogates). `oversizedNumber` is called with
/// every well-formed number that the parser rejects: integers of more than 64 bits, and other
/// numbers too large for a double. Time is linear in the size of the text, memory constant.
std::optional<Error> findJsonSyntaxError(std::string_view json,
                                         const NumberHandler& oversizedNumber = nullptr);

}  // namespace quillmar
