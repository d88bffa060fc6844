// Untrusted text on one line of a menu or a dialog. Any thread.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace quillmar {

/// The text on one line, with invisible characters made visible, truncated to `maximumCharacters`
/// user-perceived characters (extended grapheme clusters) and to `maximumBytes`. A truncated text
/// ends in "…". Invalid UTF-8 and U+0000 are replaced by U+FFFD. Text beyond the limits is not
/// processed.
std::string singleLineText(std::string_view text, std::size_t maximumCharacters,
                           std::size_t maximumBytes = std::size_t{16} * 1024);

}  // namespace quillmar
