// Finds the place of a syntax error. The parser that reads documents only reports that there is
// one; this slower second pass reports where, what was expected and what was found. Any thread.

#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "platform/result.h"

namespace quillmar {

/// The deepest nesting of objects and arrays that is accepted.
inline constexpr std::size_t maximumJsonDepth = 1024;

/// Called with a part of the scanned text.
using NumberHandler = std::function<void(std::string_view number)>;

/// The first error of the text; absent if it is JSON (RFC 8259, in UTF-8 without a byte-order mark,
/// no deeper than maximumJsonDepth, strings without lone surrogates). `oversizedNumber` is called
/// with every well-formed number that the parser refuses: integers of more than 64 bits, and other
/// numbers too large for a double. Time is linear in the size of the text, memory constant.
std::optional<Error> findJsonSyntaxError(std::string_view json,
                                         const NumberHandler& oversizedNumber = nullptr);

}  // namespace quillmar
