#include "platform/menu_label.h"

#include "platform/single_line_text.h"

namespace quillmar {

std::string menuLabel(std::string_view title, std::size_t maximumBytes) {
  return singleLineText(title, maximumLabelCharacters, maximumBytes);
}

}  // namespace quillmar
