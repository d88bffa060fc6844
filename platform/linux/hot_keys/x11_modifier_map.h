// Which modifier bits of an X keyboard are Alt, Super and the locks. The bits differ between
// keyboards, and programs like xmodmap change them.

#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include <xcb/xcb.h>

namespace quillmar {

struct X11ModifierMap {
  /// The bit of the Alt keys; 0 if the keyboard has none.
  std::uint16_t alt = 0;
  /// The bit of the Super keys; 0 if the keyboard has none.
  std::uint16_t super = 0;
  /// The bits of CapsLock, NumLock and ScrollLock. Hot keys work whether or not they are set.
  std::uint16_t locks = XCB_MOD_MASK_LOCK;

  bool operator==(const X11ModifierMap&) const = default;

  /// Asks the server for the map of the keyboard. Waits for one round trip; the default map if the
  /// server does not reply.
  static X11ModifierMap ofKeyboard(xcb_connection_t* connection);

  /// The X modifier bits for bits of hot_key_modifiers; absent if the keyboard lacks one of the
  /// keys.
  std::optional<std::uint16_t> bitsFor(std::uint32_t modifiers) const;

  /// The bits that bitsFor() can return.
  std::uint16_t hotKeyBits() const;

  /// Every combination of the lock bits, the empty one included.
  std::vector<std::uint16_t> lockCombinations() const;
};

}  // namespace quillmar
