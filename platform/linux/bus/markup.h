// Plain text for those readers on a bus who take what they get for markup.

#pragma once

#include <string>
#include <string_view>

namespace quillmar {

/// The text with the characters "&", "<" and ">" as entities.
std::string escapedMarkup(std::string_view text);

}  // namespace quillmar
