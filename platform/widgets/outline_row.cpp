#include "platform/widgets/outline_row.h"

namespace quillmar {

std::string OutlineRow::title() const {
  for (const OutlineCell& cell : cells) {
    if (const auto* const text = std::get_if<TextCell>(&cell)) return text->text;
  }
  return "";
}

std::string OutlineRow::spokenText() const {
  if (!accessibilityLabel.empty()) return accessibilityLabel;
  std::string spoken;
  for (const OutlineCell& cell : cells) {
    const auto* const text = std::get_if<TextCell>(&cell);
    if (text == nullptr || text->text.empty()) continue;
    if (!spoken.empty()) spoken += ", ";
    spoken += text->text;
  }
  return spoken;
}

const CheckboxCell* OutlineRow::checkbox() const {
  for (const OutlineCell& cell : cells) {
    if (const auto* const checkbox = std::get_if<CheckboxCell>(&cell)) return checkbox;
  }
  return nullptr;
}

}  // namespace quillmar
