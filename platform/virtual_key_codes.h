// The keys of a keyboard by their virtual key codes, the numbers by which the settings document
// stores shortcuts.
//
// The codes are those of macOS (the constants kVK_... of its header HIToolbox/Events.h). They stand
// for places on the keyboard: code 0 is the key that writes an A on a US keyboard, whatever it
// writes in another layout. Evdev codes are in linux/input-event-codes.h, names of keys in
// /usr/share/X11/xkb/keycodes/evdev, names of key symbols in X11/keysymdef.h.

#pragma once

#include <cstdint>
#include <span>
#include <string_view>

namespace quillmar {

struct VirtualKey {
  std::uint16_t code;
  /// The code in Linux; that of X and of Wayland is larger by 8.
  std::uint16_t evdevCode;
  /// Name of the key in XKB.
  std::string_view xkbName;
  /// What the key writes on a US keyboard; for keys like F1 (U+F704) and Home (U+F729) the
  /// character that stands for the key; 0 for none.
  char32_t character;
  /// Name of the key symbol on a US keyboard; empty for none.
  std::string_view keysym;
};

/// In ascending order of the codes. Several keys may have one code.
std::span<const VirtualKey> virtualKeys();

// The first key with a property; null when there is none.

const VirtualKey* virtualKeyForEvdevCode(std::uint32_t evdevCode);
const VirtualKey* virtualKeyForCharacter(char32_t character);
const VirtualKey* virtualKeyForKeysym(std::string_view keysym);

}  // namespace quillmar
