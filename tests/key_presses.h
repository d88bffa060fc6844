// Presses of keys, for tests.

#pragma once

#include <string_view>

#include "platform/key_press.h"
#include "platform/virtual_key_codes.h"

namespace quillmar {

/// The first character of a UTF-8 text, of those with up to three bytes.
inline char32_t firstCharacter(std::string_view text) {
  const auto byte = [&](std::size_t at) {
    return at < text.size() ? static_cast<unsigned char>(text[at]) : 0U;
  };
  if (byte(0) < 0x80) return byte(0);
  if (byte(0) < 0xe0) return (byte(0) & 0x1fU) << 6 | (byte(1) & 0x3fU);
  return (byte(0) & 0x0fU) << 12 | (byte(1) & 0x3fU) << 6 | (byte(2) & 0x3fU);
}

/// A press of the key that stands for the key equivalent on a US keyboard.
inline KeyPress pressOf(const KeyEquivalent& equivalent) {
  KeyPress press{
      .keyCode = {}, .character = equivalent.character, .modifiers = equivalent.modifierMask};
  const VirtualKey* const key = virtualKeyForCharacter(firstCharacter(equivalent.character));
  if (key != nullptr) press.keyCode = key->code;
  return press;
}

}  // namespace quillmar
