#include "platform/single_line_text.h"

#include <algorithm>

#include "platform/text.h"
#include "platform/visible_text.h"

namespace quillmar {

namespace {

constexpr std::string_view ellipsis = "…";

bool isPrintableAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return c >= ' ' && c <= '~'; });
}

}  // namespace

std::string singleLineText(std::string_view text, std::size_t maximumCharacters,
                           std::size_t maximumBytes) {
  const std::size_t limit = std::min(maximumCharacters, maximumBytes);
  if (text.size() <= limit && isPrintableAscii(text)) return std::string(text);

  const std::string_view head = text::firstCharacters(text, maximumCharacters, maximumBytes);
  std::string line = text::onOneLine(text::replacingInvalidCharacters(head));
  std::ranges::replace(line, '\t', ' ');
  line = text::withVisibleCharacters(line);
  const bool isWhole = head.size() == text.size();
  if (isWhole &&
      text::firstCharacters(line, maximumCharacters, maximumBytes).size() == line.size()) {
    return line;
  }
  const std::size_t room = maximumBytes - std::min(maximumBytes, ellipsis.size());
  return std::string(text::firstCharacters(line, maximumCharacters - 1, room)).append(ellipsis);
}

}  // namespace quillmar
