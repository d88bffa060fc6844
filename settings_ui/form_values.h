// Reads the values of a form.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/control_state.h"
#include "platform/text.h"

namespace quillmar {

/// The text without white space around it; absent if nothing is left.
inline std::optional<std::string> trimmedOrAbsent(std::string_view text) {
  const std::string_view trimmed = text::trimWhitespace(text);
  if (trimmed.empty()) return std::nullopt;
  return std::string(trimmed);
}

inline ControlState controlState(bool isOn) {
  return isOn ? ControlState::on : ControlState::off;
}

}  // namespace quillmar
