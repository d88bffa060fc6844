// Functions for UTF-8 text. Any thread. The first function that counts characters loads ICU's data.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillmar::text {

/// True if the bytes are well-formed UTF-8. U+0000 is allowed.
bool isValidUtf8(std::string_view bytes);

/// Removes white space (general category Zs, and TAB) at both ends. Precondition: valid UTF-8.
std::string_view trimWhitespace(std::string_view text);

/// Removes white space and newlines (U+000A to U+000D, U+0085, U+2028, U+2029) at both ends.
/// Precondition: valid UTF-8.
std::string_view trimWhitespaceAndNewlines(std::string_view text);

/// True if the text contains a newline, as defined above.
bool containsNewline(std::string_view text);

/// Replaces each newline, as defined above, with a space; CR LF counts as one. Precondition: valid
/// UTF-8.
std::string onOneLine(std::string_view text);

/// The length in characters of the longest run of white space and newlines, as defined above, that
/// other text follows.
std::size_t longestGap(std::string_view text);

/// Splits the text at an ASCII separator and drops empty parts.
std::vector<std::string> split(std::string_view text, char separator);

/// The last `count` user-perceived characters (extended grapheme clusters), or the whole text if it
/// is shorter.
std::string_view lastCharacters(std::string_view text, std::size_t count);

/// The first `count` user-perceived characters, or as many as fit into `maximumBytes`. A first
/// character that does not fit is cut between code points.
std::string_view firstCharacters(std::string_view text, std::size_t count,
                                 std::size_t maximumBytes);

/// The first code point; 0 if the text is empty or starts with ill-formed UTF-8.
char32_t firstCodePoint(std::string_view text);

/// The longest beginning or end of the text that has at most `count` bytes and does not split a
/// code point. Constant time. Precondition: valid UTF-8.
std::string_view firstBytes(std::string_view text, std::size_t count);
std::string_view lastBytes(std::string_view text, std::size_t count);

/// Convert to lower or upper case by the full, locale-independent rules of Unicode: the result may
/// have another length.
std::string lowercased(std::string_view text);
std::string uppercased(std::string_view text);

/// Replaces control characters, line and paragraph separators and bidirectional controls with their
/// JSON escapes, such as \n and \u001b, and ill-formed UTF-8 with U+FFFD.
std::string escapingControlCharacters(std::string_view text);

/// Replaces ill-formed sequences and U+0000, which D-Bus and windowing systems do not accept, with
/// U+FFFD.
std::string replacingInvalidCharacters(std::string_view text);

}  // namespace quillmar::text
