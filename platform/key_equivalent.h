// Keys and modifiers of menu entries and buttons.

#pragma once

#include <cstdint>
#include <string>

namespace quillmar {

/// Bits of a modifier mask, for key equivalents, recorded shortcuts and key presses. `option` is
/// the Alt key, `command` the Super key.
namespace modifiers {
inline constexpr std::uint64_t shift = 0x20000;
inline constexpr std::uint64_t control = 0x40000;
inline constexpr std::uint64_t option = 0x80000;
inline constexpr std::uint64_t command = 0x100000;
}  // namespace modifiers

/// The key shown beside a menu entry, or the key that presses a button. `character` is the
/// character that the key produces, including function keys (U+F704 is F1 and so on); empty means
/// none.
struct KeyEquivalent {
  std::string character;
  std::uint64_t modifierMask = modifiers::command;

  bool operator==(const KeyEquivalent&) const = default;
};

/// Keys that do not produce a printable character, and space.
namespace keys {
inline const KeyEquivalent returnKey{"\r", 0};
inline const KeyEquivalent escape{"\x1b", 0};
inline const KeyEquivalent tab{"\t", 0};
inline const KeyEquivalent backTab{"\t", modifiers::shift};
inline const KeyEquivalent controlTab{"\t", modifiers::control};
inline const KeyEquivalent controlBackTab{"\t", modifiers::control | modifiers::shift};
inline const KeyEquivalent space{" ", 0};
inline const KeyEquivalent up{"\uf700", 0};
inline const KeyEquivalent down{"\uf701", 0};
inline const KeyEquivalent left{"\uf702", 0};
inline const KeyEquivalent right{"\uf703", 0};
inline const KeyEquivalent home{"\uf729", 0};
inline const KeyEquivalent end{"\uf72b", 0};
inline const KeyEquivalent pageUp{"\uf72c", 0};
inline const KeyEquivalent pageDown{"\uf72d", 0};
}  // namespace keys

}  // namespace quillmar
