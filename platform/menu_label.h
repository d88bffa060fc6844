// Menu titles in the form that is sent to panels. Any thread.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmar {

/// Maximum length of a label in user-perceived characters (extended grapheme clusters).
inline constexpr std::size_t maximumLabelCharacters = 500;

/// Maximum size of one label. A single character can have any number of bytes.
inline constexpr std::size_t maximumLabelBytes = std::size_t{16} * 1024;

/// The title as singleLineText() of at most maximumLabelCharacters and `maximumBytes`.
std::string menuLabel(std::string_view title, std::size_t maximumBytes = maximumLabelBytes);

}  // namespace quillmar
