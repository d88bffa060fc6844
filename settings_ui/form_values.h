// Reads the values of a form.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/control_state.h"
#include "platform/text.h"
#include "platform/widgets/text_field.h"

namespace quillmar {

/// The text without white space around it; absent if nothing is left.
inline std::optional<std::string> trimmedOrAbsent(std::string_view text) {
  const std::string_view trimmed = text::trimWhitespace(text);
  if (trimmed.empty()) return std::nullopt;
  return std::string(trimmed);
}

/// The text of the field, or `original` if the user has not changed it. A field shows line breaks
/// as spaces, so its text may differ from the original.
inline std::string editedText(const TextField& field, const std::string& original) {
  return field.text() == text::onOneLine(original) ? original : field.text();
}

inline ControlState controlState(bool isOn) {
  return isOn ? ControlState::on : ControlState::off;
}

}  // namespace quillmar
