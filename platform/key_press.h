// One press of a key in a window.

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/key_equivalent.h"

namespace quillmar {

struct KeyPress {
  /// Virtual key code (platform/virtual_key_codes.h), independent of the layout. Absent for keys
  /// that have none.
  std::optional<std::uint16_t> keyCode;
  /// The character that the key produces in the user's layout, in lower case, ignoring modifiers.
  /// Function keys have private-use characters (U+F704 is F1). Empty if there is none.
  std::string character;
  /// Bits of quillmar::modifiers.
  std::uint64_t modifiers = 0;

  /// True if the press matches the key equivalent.
  bool is(const KeyEquivalent& key) const {
    return character == key.character && modifiers == key.modifierMask;
  }

  bool operator==(const KeyPress&) const = default;
};

}  // namespace quillmar
