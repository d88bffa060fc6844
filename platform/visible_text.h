// Text in which nothing is hidden from the reader. Any thread.

#pragma once

#include <string>
#include <string_view>

namespace quillmar::text {

/// The text with the number of each character that a reader would not see, as "‹U+202E›": those
/// that change the direction of writing, that mean nothing by themselves or are drawn as nothing,
/// and controls and line separators other than the line feed and the tab. Without it, one command
/// could look like another. Joiners stay where emoji and scripts other than Latin need them.
/// Precondition: valid UTF-8.
std::string withVisibleCharacters(std::string_view text);

}  // namespace quillmar::text
