// Symbols by the names that users type.

#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "platform/image.h"
#include "platform/text.h"

namespace quillmar {

/// The symbol with this name, without white space around it; absent if there is none.
inline std::optional<Image> symbolImage(Images& images, std::string_view name) {
  const std::string trimmed(text::trimWhitespace(name));
  return trimmed.empty() ? std::nullopt : images.symbol(trimmed);
}

}  // namespace quillmar
