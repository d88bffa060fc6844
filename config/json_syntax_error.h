// Finds where a text stops being JSON. The parser that reads documents only says that one is not;
// this slower second pass says where, what was expected and what stands there. Any thread.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "platform/result.h"

namespace quillmar {

/// Objects and arrays may stand inside one another this deep.
inline constexpr std::size_t maximumJsonDepth = 1024;

/// The first error of the text; absent when it is JSON (RFC 8259, in UTF-8 without a byte-order
/// mark, no deeper than maximumJsonDepth, strings without lone surrogates, integers that fit 64
/// bits, other numbers finite). Time is linear in the size of the text, memory constant.
std::optional<Error> findJsonSyntaxError(std::string_view json);

}  // namespace quillmar
