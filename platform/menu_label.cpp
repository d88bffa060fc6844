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

std::string menuLabel(std::string_view title, std::size_t mostBytes) {
  const std::size_t most = std::min(mostLabelCharacters, mostBytes);
  if (title.size() <= most && isPrintableAscii(title)) return std::string(title);

  // Text beyond the limit is not processed: a title may have megabytes.
  const std::string_view head = text::firstCharacters(title, mostLabelCharacters, mostBytes);
  std::string line = text::onOneLine(text::replacingInvalidCharacters(head));
  std::ranges::replace(line, '\t', ' ');
  line = text::withVisibleCharacters(line);
  const bool isWhole = head.size() == title.size();
  if (isWhole &&
      text::firstCharacters(line, mostLabelCharacters, mostBytes).size() == line.size()) {
    return line;
  }
  const std::size_t room = mostBytes - std::min(mostBytes, ellipsis.size());
  return std::string(text::firstCharacters(line, mostLabelCharacters - 1, room)).append(ellipsis);
}

}  // namespace quillmar
