// Escapes plain text for D-Bus peers that parse it as markup.

#pragma once

#include <string>
#include <string_view>

namespace quillmar {

/// The text with the characters "&", "<" and ">" as entities.
std::string escapedMarkup(std::string_view text);

}  // namespace quillmar
