// Locates and quotes parts of a JSON text for error messages. Not used for valid documents. Any
// thread.

#pragma once

#include <cstddef>
#include <span>
#include <string>
#include <string_view>

namespace quillmar {

/// Both are counted from 1. Columns count code points; lines end with a line feed.
struct TextPosition {
  std::size_t line = 1;
  std::size_t column = 1;

  bool operator==(const TextPosition&) const = default;
};

/// The position of the byte at `offset`. Precondition: offset <= text.size().
TextPosition positionAt(std::string_view text, std::size_t offset);

/// "line 3, column 14".
std::string description(TextPosition position);

/// The first 40 characters of the text, followed by "…" if it is longer. Control characters and
/// bidirectional controls are shown as JSON escapes, ill-formed UTF-8 as U+FFFD.
std::string excerpt(std::string_view text);

/// The same in double quotes.
std::string quotedExcerpt(std::string_view text);

/// The source text of a nested value. `ordinals` is the path from the root: the index of the child
/// at each level, counted from 0, including duplicate keys. Linear time. Precondition: valid JSON
/// that has these children.
std::string_view valueAt(std::string_view json, std::span<const std::size_t> ordinals);

}  // namespace quillmar
