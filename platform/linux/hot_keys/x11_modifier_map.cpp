#include "platform/linux/hot_keys/x11_modifier_map.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>

#include <xkbcommon/xkbcommon-keysyms.h>

#include "platform/hot_keys.h"
#include "platform/xcb/xcb_pointers.h"

namespace quillmar {

namespace {

constexpr int modifierCount = 8;
// Shift, Lock and Control have fixed bits. The others depend on the keys that set them.
constexpr int firstAssignedModifier = 3;

/// The key symbols of every key.
class KeySymbols {
 public:
  KeySymbols(xcb_connection_t* connection, xcb_get_keyboard_mapping_cookie_t cookie)
      : firstKey_(xcb_get_setup(connection)->min_keycode),
        reply_(xcb_get_keyboard_mapping_reply(connection, cookie, nullptr)) {}

  static xcb_get_keyboard_mapping_cookie_t request(xcb_connection_t* connection) {
    const auto* setup = xcb_get_setup(connection);
    return xcb_get_keyboard_mapping(
        connection, setup->min_keycode,
        static_cast<std::uint8_t>(setup->max_keycode - setup->min_keycode + 1));
  }

  /// True if the key has one of the symbols, in any layout and level.
  bool hasAny(xcb_keycode_t key, std::span<const xcb_keysym_t> wanted) const {
    if (!reply_ || key < firstKey_) return false;
    const std::span symbols(xcb_get_keyboard_mapping_keysyms(reply_.get()),
                            xcb_get_keyboard_mapping_keysyms_length(reply_.get()));
    const std::size_t width = reply_->keysyms_per_keycode;
    const std::size_t start = (key - firstKey_) * width;
    if (start + width > symbols.size()) return false;
    const auto ofKey = symbols.subspan(start, width);
    return std::find_first_of(ofKey.begin(), ofKey.end(), wanted.begin(), wanted.end()) !=
           ofKey.end();
  }

 private:
  xcb_keycode_t firstKey_;
  XcbPointer<xcb_get_keyboard_mapping_reply_t> reply_;
};

}  // namespace

X11ModifierMap X11ModifierMap::ofKeyboard(xcb_connection_t* connection) {
  const auto modifiersCookie = xcb_get_modifier_mapping(connection);
  const KeySymbols symbols(connection, KeySymbols::request(connection));
  const XcbPointer<xcb_get_modifier_mapping_reply_t> modifiers(
      xcb_get_modifier_mapping_reply(connection, modifiersCookie, nullptr));
  X11ModifierMap map;
  if (!modifiers) return map;
  const xcb_keycode_t* keys = xcb_get_modifier_mapping_keycodes(modifiers.get());
  const std::size_t width = modifiers->keycodes_per_modifier;
  const auto firstWith = [&](std::span<const xcb_keysym_t> wanted) -> std::uint16_t {
    for (int modifier = firstAssignedModifier; modifier < modifierCount; ++modifier) {
      const std::span ofModifier(keys + modifier * width, width);
      if (std::any_of(ofModifier.begin(), ofModifier.end(),
                      [&](xcb_keycode_t key) { return symbols.hasAny(key, wanted); })) {
        return static_cast<std::uint16_t>(1U << modifier);
      }
    }
    return 0;
  };
  map.alt = firstWith(std::array<xcb_keysym_t, 2>{XKB_KEY_Alt_L, XKB_KEY_Alt_R});
  map.super = firstWith(std::array<xcb_keysym_t, 2>{XKB_KEY_Super_L, XKB_KEY_Super_R});
  map.locks |= firstWith(std::array<xcb_keysym_t, 1>{XKB_KEY_Num_Lock});
  map.locks |= firstWith(std::array<xcb_keysym_t, 1>{XKB_KEY_Scroll_Lock});
  return map;
}

std::optional<std::uint16_t> X11ModifierMap::bitsFor(std::uint32_t modifiers) const {
  std::uint16_t bits = 0;
  if (modifiers & hot_key_modifiers::shift) bits |= XCB_MOD_MASK_SHIFT;
  if (modifiers & hot_key_modifiers::control) bits |= XCB_MOD_MASK_CONTROL;
  if (modifiers & hot_key_modifiers::option) {
    if (alt == 0) return std::nullopt;
    bits |= alt;
  }
  if (modifiers & hot_key_modifiers::command) {
    if (super == 0) return std::nullopt;
    bits |= super;
  }
  return bits;
}

std::uint16_t X11ModifierMap::hotKeyBits() const {
  return XCB_MOD_MASK_SHIFT | XCB_MOD_MASK_CONTROL | alt | super;
}

std::vector<std::uint16_t> X11ModifierMap::lockCombinations() const {
  std::vector<std::uint16_t> combinations;
  // Visits every subset of the bits, from all of them to none.
  std::uint16_t subset = locks;
  while (true) {
    combinations.push_back(subset);
    if (subset == 0) return combinations;
    subset = (subset - 1) & locks;
  }
}

}  // namespace quillmar
