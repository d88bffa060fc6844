// Questions about text. All text is UTF-8. Any thread; the first question about characters loads
// Unicode's tables for them.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillmar::text {

/// True when the bytes are well-formed UTF-8 (U+0000 is a character like any other).
bool isValidUtf8(std::string_view bytes);

/// Without the white space (general category Zs, and TAB) at both ends. Precondition: valid UTF-8.
std::string_view trimWhitespace(std::string_view text);

/// Without the white space and newlines (U+000A to U+000D, U+0085, U+2028, U+2029) at both ends.
/// Precondition: valid UTF-8.
std::string_view trimWhitespaceAndNewlines(std::string_view text);

/// True when the text holds a newline, as above.
bool containsNewline(std::string_view text);

/// The text with a space in place of each newline, as above; CR LF is one. Precondition: valid
/// UTF-8.
std::string onOneLine(std::string_view text);

/// The parts between separators, which are ASCII; empty parts are left out.
std::vector<std::string> split(std::string_view text, char separator);

/// The last `count` characters as a reader counts them (extended grapheme clusters); the whole text
/// when it has no more.
std::string_view lastCharacters(std::string_view text, std::size_t count);

/// The first `count` characters as above, or as many as fit into `mostBytes`. A character that has
/// more bytes by itself is cut between its code points.
std::string_view firstCharacters(std::string_view text, std::size_t count, std::size_t mostBytes);

/// The beginning or the end of the text, of at most `count` bytes and without a part of a code
/// point. Takes the same time for texts of any length. Precondition: valid UTF-8.
std::string_view firstBytes(std::string_view text, std::size_t count);
std::string_view lastBytes(std::string_view text, std::size_t count);

/// Lower case by Unicode's rules, without any locale's own.
std::string lowercased(std::string_view text);

/// The text with control characters, line and paragraph separators and characters that change the
/// direction of text as their JSON escapes, such as \n and \u001b. Ill-formed UTF-8 becomes U+FFFD.
std::string escapingControlCharacters(std::string_view text);

/// The text with every ill-formed sequence and, as buses and windowing systems take no U+0000,
/// every U+0000 replaced by U+FFFD.
std::string replacingUnsendable(std::string_view text);

}  // namespace quillmar::text
