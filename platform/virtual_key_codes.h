// Virtual key codes, the numbers that identify keys in stored shortcuts.
//
// The codes are those of macOS (the constants kVK_... of its header HIToolbox/Events.h). They
// identify positions on the keyboard: code 0 is the key that types A on a US keyboard, whatever it
// types in another layout. Evdev codes are in linux/input-event-codes.h, names of keys in
// /usr/share/X11/xkb/keycodes/evdev, names of key symbols in X11/keysymdef.h.

#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace quillmar {

struct VirtualKey {
  std::uint16_t code;
  /// The evdev code of Linux. X11 and Wayland key codes are larger by 8.
  std::uint16_t evdevCode;
  /// Name of the key in XKB.
  std::string_view xkbName;
  /// The character that the key types on a US keyboard; a private-use character for keys like F1
  /// (U+F704) and Home (U+F729); 0 if there is none.
  char32_t character;
  /// Name of the key symbol on a US keyboard; empty for none.
  std::string_view keysym;
};

/// All keys, in ascending order of their codes. Several keys may share a code.
std::span<const VirtualKey> virtualKeys();

// The first key with the given property; null if there is none.

const VirtualKey* virtualKeyForEvdevCode(std::uint32_t evdevCode);
const VirtualKey* virtualKeyForCharacter(char32_t character);
const VirtualKey* virtualKeyForKeysym(std::string_view keysym);

}  // namespace quillmar
