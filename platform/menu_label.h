// The titles of menu entries as panels show them. Any thread.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmar {

/// As a reader counts them (extended grapheme clusters).
inline constexpr std::size_t mostLabelCharacters = 500;

/// For a label of its own. One character can have any number of bytes.
inline constexpr std::size_t mostLabelBytes = std::size_t{16} * 1024;

/// The title on one line, with characters that a reader would not see made visible, cut to
/// mostLabelCharacters and to `mostBytes`. A title that was cut ends in "…". Text that is no UTF-8
/// and U+0000 are replaced by U+FFFD.
std::string menuLabel(std::string_view title, std::size_t mostBytes = mostLabelBytes);

}  // namespace quillmar
