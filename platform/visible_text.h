// Makes invisible characters visible. Any thread.

#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace quillmar::text {

/// Replaces each invisible character with its code point, such as "‹U+202E›": bidirectional
/// controls, other format characters, characters without a glyph, and control characters and line
/// separators other than line feed and tab. Otherwise one command could look like another. A joiner
/// or variation selector is kept after a visible non-ASCII character, because emoji and many
/// scripts need it; U+FE0F also after an ASCII digit, "#" and "*". Precondition: valid UTF-8.
std::string withVisibleCharacters(std::string_view text);

/// True if withVisibleCharacters() would change the text.
bool hasInvisibleCharacters(std::string_view text);

/// A text with visible characters, and where they come from.
class VisibleText {
 public:
  VisibleText() = default;
  explicit VisibleText(std::string_view original);

  /// See withVisibleCharacters().
  const std::string& text() const { return text_; }

  /// The original characters of a range of text(), in bytes. A mark that is only partly in the
  /// range counts as a whole.
  std::string original(std::size_t begin, std::size_t end) const;

 private:
  struct Mark {
    /// The range in the visible text.
    std::size_t begin = 0;
    std::size_t end = 0;
    /// The character that it stands for.
    std::string character;
  };

  /// In their order.
  std::vector<Mark> marks_;
  std::string text_;
};

}  // namespace quillmar::text
