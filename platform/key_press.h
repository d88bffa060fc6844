// One press of a key in a window.

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/key_equivalent.h"

namespace quillmar {

struct KeyPress {
  /// Virtual key code (platform/virtual_key_codes.h): which key it was, in any layout. Absent for
  /// keys that have none.
  std::optional<std::uint16_t> keyCode;
  /// What the key writes in the user's layout, in lower case and whatever modifiers are held; keys
  /// like F1 have characters that stand for them. Empty for none.
  std::string character;
  /// Bits as in quillmar::modifiers.
  std::uint64_t modifiers = 0;

  /// True when the press is one of that key equivalent.
  bool is(const KeyEquivalent& key) const {
    return character == key.character && modifiers == key.modifierMask;
  }

  bool operator==(const KeyPress&) const = default;
};

}  // namespace quillmar
