#include "platform/menu_label.h"

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

std::string menuLabel(std::string_view title, std::size_t maximumBytes) {
  const std::size_t limit = std::min(maximumLabelCharacters, maximumBytes);
  if (title.size() <= limit && isPrintableAscii(title)) return std::string(title);

  // Text beyond the limit is not processed: a title may have megabytes.
  const std::string_view head = text::firstCharacters(title, maximumLabelCharacters, maximumBytes);
  std::string line = text::onOneLine(text::replacingInvalidCharacters(head));
  std::ranges::replace(line, '\t', ' ');
  line = text::withVisibleCharacters(line);
  const bool isWhole = head.size() == title.size();
  if (isWhole &&
      text::firstCharacters(line, maximumLabelCharacters, maximumBytes).size() == line.size()) {
    return line;
  }
  const std::size_t room = maximumBytes - std::min(maximumBytes, ellipsis.size());
  return std::string(text::firstCharacters(line, maximumLabelCharacters - 1, room))
      .append(ellipsis);
}

}  // namespace quillmar
