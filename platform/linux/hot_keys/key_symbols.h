// The names of the symbols that keys type in a keyboard layout. The portal identifies a key by its
// symbol, a stored shortcut by its position.

#pragma once

#include <cstdint>
#include <map>
#include <string>

namespace quillmar {

/// Names as in xkbcommon-keysyms.h, without the prefix.
struct KeySymbols {
  /// Without modifiers.
  std::string plain;
  /// With Shift, if that is another character and not just the capital letter; otherwise empty.
  std::string shifted;

  bool operator==(const KeySymbols&) const = default;
};

/// By virtual key code. Modifier keys and keys without a symbol are missing.
using KeySymbolTable = std::map<std::uint32_t, KeySymbols>;

/// True for the virtual key codes of keys that are not modifiers.
bool isShortcutKey(std::uint32_t keyCode);

/// The symbols of a keymap in the text format of XKB. Of several layouts, the first in which the
/// key types a Latin character counts. Empty if the text is not a keymap.
KeySymbolTable keySymbolsOfKeymap(const std::string& keymap);

/// The symbols of a layout, such as "us".
KeySymbolTable keySymbolsOfLayout(const std::string& layout);

}  // namespace quillmar
