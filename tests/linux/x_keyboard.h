// The keyboard of an X server, pressed by a test, and the grabs of another program.

#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include <xcb/xcb.h>

#include "platform/xcb/xcb_pointers.h"

namespace quillmar {

/// X key codes.
namespace keys {
inline constexpr xcb_keycode_t alt = 64;
inline constexpr xcb_keycode_t capsLock = 66;
inline constexpr xcb_keycode_t control = 37;
inline constexpr xcb_keycode_t f5 = 71;
inline constexpr xcb_keycode_t help = 146;
inline constexpr xcb_keycode_t insert = 118;
inline constexpr xcb_keycode_t k = 45;
inline constexpr xcb_keycode_t l = 46;
inline constexpr xcb_keycode_t menu = 135;
inline constexpr xcb_keycode_t numLock = 77;
inline constexpr xcb_keycode_t q = 24;
inline constexpr xcb_keycode_t scrollLock = 78;
inline constexpr xcb_keycode_t shift = 50;
inline constexpr xcb_keycode_t super = 133;
}  // namespace keys

class XKeyboard {
 public:
  explicit XKeyboard(const std::string& display);

  /// The server has processed the presses and releases on return.
  void press(const std::vector<xcb_keycode_t>& keys);
  void release(const std::vector<xcb_keycode_t>& keys);

  /// Presses the keys in this order and releases them in reverse.
  void type(const std::vector<xcb_keycode_t>& keys);

  /// The same, and holds the keys until the server has repeated the last one three times.
  void hold(const std::vector<xcb_keycode_t>& keys);

  /// The modifiers that are down or locked, and in bits 13 and 14 the layout.
  std::uint16_t state();

 private:
  void send(std::uint8_t event, const std::vector<xcb_keycode_t>& keys);

  std::string display_;
  XcbConnectionPointer connection_;
};

/// Grabs keys until it is destroyed.
class OtherProgramWithGrabs {
 public:
  explicit OtherProgramWithGrabs(const std::string& display);

  /// The X error code, 0 if the key is grabbed.
  int grab(xcb_keycode_t key, std::uint16_t modifiers);

 private:
  XcbConnectionPointer connection_;
};

}  // namespace quillmar
