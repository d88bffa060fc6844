// Completions for fields that take the name of a symbol.

#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "platform/widgets/text_field.h"

namespace quillmar {

class Images;

inline constexpr std::size_t maximumSymbolCompletions = 50;

/// The names of known symbols, with their images, that complete the typed text, in any case and
/// without white space at its ends: first the names that begin with it, then those that contain it.
/// Empty for an empty text, and if the text itself is the only such name.
std::vector<TextCompletion> symbolCompletions(Images& images, std::string_view typed);

}  // namespace quillmar
