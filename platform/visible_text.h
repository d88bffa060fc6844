// Makes invisible characters visible. Any thread.

#pragma once

#include <string>
#include <string_view>

namespace quillmar::text {

/// Replaces each invisible character with its code point, such as "‹U+202E›": bidirectional
/// controls, other format characters, characters without a glyph, and control characters and line
/// separators other than line feed and tab. Otherwise one command could look like another. Joiners
/// are kept after non-ASCII characters, because emoji and many scripts need them. Precondition:
/// valid UTF-8.
std::string withVisibleCharacters(std::string_view text);

/// True if withVisibleCharacters() would change the text.
bool hasInvisibleCharacters(std::string_view text);

}  // namespace quillmar::text
