// Completions for fields that take the name of a symbol.

#pragma once

#include <cstddef>
#include <string_view>
#include <vector>

#include "platform/widgets/text_field.h"

namespace quillmar {

class Images;

inline constexpr std::size_t maximumSymbolCompletions = 50;

/// The known symbols whose names begin with the typed text, then those whose names contain it, with
/// their images. Ignores case, and white space around the text. Empty if the text is empty or is
/// the only such name.
std::vector<TextCompletion> symbolCompletions(Images& images, std::string_view typed);

}  // namespace quillmar
