// Hot keys on an X server of the test's own, a user at its keyboard, and other programs.

#pragma once

#include <cstdint>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/linux/hot_keys/x11_hot_keys.h"
#include "tests/linux/child_programs.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/x_keyboard.h"
#include "tests/virtual_keys.h"

namespace quillmar {

inline constexpr int badAccess = 10;
inline constexpr std::uint16_t mod2 = XCB_MOD_MASK_2;
inline constexpr std::uint16_t mod3 = XCB_MOD_MASK_3;
inline constexpr std::uint16_t mod4 = XCB_MOD_MASK_4;

class X11HotKeysTest : public testing::Test {
 protected:
  X11HotKeysTest() {
    hotKeys_->installEventHandlers({
        .pressed =
            [this](HotKeyID id, const Activation& activation) {
              pressed_.push_back(id.id);
              activations_.push_back(activation);
            },
        .refused = [this](HotKeyReference reference,
                          HotKeyStatus status) { refused_.emplace_back(reference, status); },
    });
  }

  const std::string& display() const { return server_.display(); }

  Result<HotKeyReference, HotKeyStatus> tryToRegister(std::uint32_t keyCode,
                                                      std::uint32_t modifiers, std::uint32_t id) {
    return hotKeys_->registerHotKey(
        {.keyCode = keyCode, .modifiers = modifiers, .id = {1, id}, .description = {}});
  }

  HotKeyReference registerKey(std::uint32_t keyCode, std::uint32_t modifiers, std::uint32_t id) {
    return tryToRegister(keyCode, modifiers, id).value();
  }

  /// Types the keys, then F5, and waits until the hot key of F5 was reported. All other presses
  /// were reported before.
  void type(const std::vector<xcb_keycode_t>& keys) {
    keyboard_.type(keys);
    waitForPresses();
  }

  void waitForPresses() {
    const auto marker = registerKey(keyF5, 0, markerId);
    keyboard_.type({keys::f5});
    ASSERT_TRUE(runMainLoopUntil([&] { return !pressed_.empty() && pressed_.back() == markerId; }));
    pressed_.pop_back();
    hotKeys_->unregisterHotKey(marker);
  }

  /// Runs a command that changes the keyboard. The hot keys have noticed it on return.
  void changeKeyboard(const std::vector<std::string>& command) {
    ASSERT_TRUE(runCommand(command, {"DISPLAY=" + display()}));
    waitForPresses();
  }

  static constexpr std::uint32_t markerId = 4711;

  XServer server_;
  XKeyboard keyboard_{display()};
  std::unique_ptr<X11HotKeys> hotKeys_ = std::make_unique<X11HotKeys>(display());
  std::vector<std::uint32_t> pressed_;
  std::vector<Activation> activations_;
  std::vector<std::pair<HotKeyReference, HotKeyStatus>> refused_;
};

}  // namespace quillmar
