// Tells people where something stands in a JSON text and what it looks like there. Used for error
// texts only, so nothing here runs for a document that is in order. Any thread.

#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace quillmar {

/// Both counted from 1; columns count characters (code points), and lines end with a line feed.
struct TextPosition {
  std::size_t line = 1;
  std::size_t column = 1;

  bool operator==(const TextPosition&) const = default;
};

/// The position of the byte at `offset`. Precondition: offset <= text.size().
TextPosition positionAt(std::string_view text, std::size_t offset);

/// "line 3, column 14".
std::string description(TextPosition position);

/// The first 40 characters of the text, then "…" when it goes on. Control characters and those that
/// turn the direction of text are shown as their JSON escapes, ill-formed UTF-8 as U+FFFD.
std::string excerpt(std::string_view text);

/// The same in double quotes.
std::string quotedExcerpt(std::string_view text);

/// The source of the value that is reached from the root by entering the `ordinals[0]`th child, of
/// it the `ordinals[1]`th, and so on, counted from 0 and with duplicate keys counted like any
/// other. Time is linear in the size of the text. Precondition: valid JSON that has these children.
std::string_view valueAt(std::string_view json, std::span<const std::size_t> ordinals);

}  // namespace quillmar
