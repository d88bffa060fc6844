#include "platform/linux/hot_keys/x11_hot_keys.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <vector>

#include <glib.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/virtual_key_codes.h"
#include "tests/conformance/hot_keys_conformance.h"
#include "tests/linux/open_sockets.h"
#include "tests/linux/x11_hot_keys_fixture.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr std::uint32_t helpKey = 114;
constexpr std::uint32_t fnKey = 63;

/// A user and another program beside the hot keys.
class X11HotKeysBackend {
 public:
  HotKeys& hotKeys() { return hotKeys_; }
  void press(std::uint32_t keyCode, std::uint32_t modifiers) {
    keyboard_.type(keysOf(keyCode, modifiers));
  }
  void hold(std::uint32_t keyCode, std::uint32_t modifiers) {
    keyboard_.hold(keysOf(keyCode, modifiers));
  }
  void setLocks(bool capsLock, bool numLock) {
    const std::uint16_t state = keyboard_.state();
    if (capsLock != ((state & XCB_MOD_MASK_LOCK) != 0)) keyboard_.type({keys::capsLock});
    if (numLock != ((state & mod2) != 0)) keyboard_.type({keys::numLock});
  }
  bool takeByOtherProgram(std::uint32_t keyCode, std::uint32_t modifiers) {
    return other_->grab(keysOf(keyCode, 0).back(), bitsOf(modifiers)) == 0;
  }
  void releaseByOtherPrograms() { other_.emplace(server_.display()); }
  void settle() { runMainLoopWhileReady(); }
  bool runUntil(const std::function<bool()>& done) { return runMainLoopUntil(done); }

 private:
  static std::vector<xcb_keycode_t> keysOf(std::uint32_t keyCode, std::uint32_t modifiers) {
    std::vector<xcb_keycode_t> pressed;
    if (modifiers & hot_key_modifiers::command) pressed.push_back(keys::super);
    if (modifiers & hot_key_modifiers::shift) pressed.push_back(keys::shift);
    for (const VirtualKey& key : virtualKeys()) {
      if (key.code == keyCode) pressed.push_back(static_cast<xcb_keycode_t>(key.evdevCode + 8));
    }
    return pressed;
  }
  static std::uint16_t bitsOf(std::uint32_t modifiers) {
    return static_cast<std::uint16_t>(
        ((modifiers & hot_key_modifiers::command) ? XCB_MOD_MASK_4 : 0) |
        ((modifiers & hot_key_modifiers::shift) ? XCB_MOD_MASK_SHIFT : 0));
  }

  XServer server_;
  XKeyboard keyboard_{server_.display()};
  std::optional<OtherProgramWithGrabs> other_{std::in_place, server_.display()};
  X11HotKeys hotKeys_{server_.display()};
};

INSTANTIATE_TYPED_TEST_SUITE_P(X11HotKeys, HotKeysConformance, X11HotKeysBackend);

TEST_F(X11HotKeysTest, ConnectsOnTheFirstRegistration) {
  const std::size_t before = openSockets();
  hotKeys_->unregisterHotKey(HotKeyReference{1});
  EXPECT_EQ(openSockets(), before);
  registerKey(keyK, hot_key_modifiers::command, 1);
  registerKey(keyL, hot_key_modifiers::command, 2);
  EXPECT_EQ(openSockets(), before + 1);
  hotKeys_.reset();
  EXPECT_EQ(openSockets(), before);
}

TEST_F(X11HotKeysTest, SuperIsCommandAndAltIsOption) {
  registerKey(keyK, hot_key_modifiers::command, 1);
  registerKey(keyK, hot_key_modifiers::option, 2);
  registerKey(keyK, hot_key_modifiers::shift, 3);
  registerKey(keyK, hot_key_modifiers::control, 4);
  type({keys::super, keys::k});
  type({keys::alt, keys::k});
  type({keys::shift, keys::k});
  type({keys::control, keys::k});
  EXPECT_THAT(pressed_, ElementsAre(1, 2, 3, 4));
}

TEST_F(X11HotKeysTest, LockedModifiersDoNotMatter) {
  // Keyboards without this change have no bit for ScrollLock.
  ASSERT_TRUE(runCommand({"xmodmap", "-e", "add Mod3 = Scroll_Lock"}, {"DISPLAY=" + display()}));
  registerKey(keyK, hot_key_modifiers::command, 1);
  std::vector<std::uint16_t> states;
  for (const xcb_keycode_t lock : {keys::capsLock, keys::numLock, keys::capsLock, keys::scrollLock,
                                   keys::numLock, keys::capsLock, keys::numLock}) {
    keyboard_.type({lock});
    states.push_back(keyboard_.state());
    type({keys::super, keys::k});
  }
  constexpr std::uint16_t caps = XCB_MOD_MASK_LOCK;
  constexpr std::uint16_t scroll = mod3;
  EXPECT_THAT(states, ElementsAre(caps, caps | mod2, mod2, mod2 | scroll, scroll, scroll | caps,
                                  scroll | caps | mod2));
  EXPECT_THAT(pressed_, ElementsAre(1, 1, 1, 1, 1, 1, 1));
}

TEST_F(X11HotKeysTest, AnotherCombinationOfTheKeyIsNotReported) {
  registerKey(keyK, hot_key_modifiers::command, 1);
  type({keys::super, keys::shift, keys::k});
  type({keys::k});
  type({keys::super, keys::l});
  EXPECT_THAT(pressed_, IsEmpty());
}

TEST_F(X11HotKeysTest, APressCarriesTheTimeOfTheEvent) {
  registerKey(keyK, hot_key_modifiers::command, 1);
  type({keys::super, keys::k});
  type({keys::super, keys::k});
  ASSERT_EQ(activations_.size(), 4);
  EXPECT_NE(activations_[0].timestamp, 0);
  EXPECT_FALSE(comesBefore(activations_[2].timestamp, activations_[0].timestamp));
  EXPECT_EQ(activations_[0].token, "");
}

TEST_F(X11HotKeysTest, AKeyOfAnotherProgramIsTakenAndNoVariantStaysGrabbed) {
  for (const std::uint16_t locks : {std::uint16_t{0}, std::uint16_t{XCB_MOD_MASK_LOCK}, mod2,
                                    std::uint16_t{mod2 | XCB_MOD_MASK_LOCK}}) {
    OtherProgramWithGrabs owner(display());
    ASSERT_EQ(owner.grab(keys::k, mod4 | locks), 0);
    const auto result = tryToRegister(keyK, hot_key_modifiers::command, 1);
    ASSERT_FALSE(result.ok());
    EXPECT_EQ(result.error(), HotKeyStatus::keyTaken);
    EXPECT_EQ(static_cast<int>(result.error()), badAccess);
    OtherProgramWithGrabs third(display());
    for (const int variant : {0, 2, 16, 18}) {
      EXPECT_EQ(third.grab(keys::k, mod4 | variant), variant == locks ? badAccess : 0);
    }
  }
  EXPECT_TRUE(tryToRegister(keyK, hot_key_modifiers::command, 1).ok());
}

TEST_F(X11HotKeysTest, ARegisteredKeyIsOursWhateverIsLocked) {
  registerKey(keyK, hot_key_modifiers::command, 1);
  OtherProgramWithGrabs other(display());
  for (const int variant : {0, 2, 16, 18})
    EXPECT_EQ(other.grab(keys::k, mod4 | variant), badAccess);
  EXPECT_EQ(other.grab(keys::k, 0), 0);
}

TEST_F(X11HotKeysTest, AnUnregisteredKeyIsFreeForOthers) {
  const auto reference = registerKey(keyK, hot_key_modifiers::command, 1);
  hotKeys_->unregisterHotKey(reference);
  runMainLoopWhileReady();
  OtherProgramWithGrabs other(display());
  EXPECT_EQ(other.grab(keys::k, XCB_MOD_MASK_ANY), 0);
}

TEST_F(X11HotKeysTest, AHotKeyThatIsRegisteredAgainAtOnceIsNeverFreeForOthers) {
  const auto reference = registerKey(keyK, hot_key_modifiers::command, 1);
  hotKeys_->unregisterHotKey(reference);
  OtherProgramWithGrabs other(display());
  EXPECT_EQ(other.grab(keys::k, XCB_MOD_MASK_4), XCB_ACCESS);
  registerKey(keyK, hot_key_modifiers::command, 2);
  runMainLoopWhileReady();
  EXPECT_EQ(other.grab(keys::k, XCB_MOD_MASK_4), XCB_ACCESS);
  type({keys::super, keys::k});
  EXPECT_THAT(pressed_, ElementsAre(2));
}

TEST_F(X11HotKeysTest, HelpIsAlsoTheKeyInsert) {
  registerKey(helpKey, 0, 1);
  type({keys::help});
  type({keys::insert});
  EXPECT_THAT(pressed_, ElementsAre(1, 1));
}

TEST_F(X11HotKeysTest, IfOneOfTwoKeysIsTakenTheOtherOneIsNotGrabbed) {
  OtherProgramWithGrabs owner(display());
  ASSERT_EQ(owner.grab(keys::insert, 0), 0);
  EXPECT_EQ(tryToRegister(helpKey, 0, 1).error(), HotKeyStatus::keyTaken);
  EXPECT_EQ(OtherProgramWithGrabs(display()).grab(keys::help, XCB_MOD_MASK_ANY), 0);
}

TEST_F(X11HotKeysTest, EveryVirtualKeyCodeIsReportedOrDoesNotExist) {
  for (const VirtualKey& key : virtualKeys()) {
    SCOPED_TRACE(key.xkbName);
    const auto result = tryToRegister(key.code, 0, key.code);
    if (key.code == fnKey) {
      ASSERT_FALSE(result.ok());
      EXPECT_EQ(result.error(), HotKeyStatus::noSuchKey);
      continue;
    }
    ASSERT_TRUE(result.ok());
    keyboard_.type({static_cast<xcb_keycode_t>(key.evdevCode + 8)});
    runMainLoopUntil([&] { return !pressed_.empty(); });
    EXPECT_THAT(pressed_, ElementsAre(key.code));
    pressed_.clear();
    hotKeys_->unregisterHotKey(result.value());
  }
  EXPECT_EQ(tryToRegister(200, 0, 1).error(), HotKeyStatus::noSuchKey);
}

TEST_F(X11HotKeysTest, TypingTheSameKeyTwiceInAMillisecondIsTwoPresses) {
  registerKey(keyK, hot_key_modifiers::command, 1);
  std::vector<std::uint32_t> expected;
  keyboard_.press({keys::super});
  for (int i = 0; i < 100; ++i) {
    keyboard_.type({keys::k});
    expected.push_back(1);
  }
  keyboard_.release({keys::super});
  waitForPresses();
  ASSERT_EQ(pressed_, expected);
  EXPECT_LT(activations_[99].timestamp - activations_[0].timestamp, 99);
}

TEST_F(X11HotKeysTest, AHotKeyThatIsPressedWhileAnotherIsHeldIsReported) {
  registerKey(keyK, hot_key_modifiers::command, 1);
  registerKey(keyL, hot_key_modifiers::command, 2);
  keyboard_.press({keys::super, keys::k});
  keyboard_.press({keys::l});
  keyboard_.release({keys::k});
  keyboard_.release({keys::l});
  keyboard_.type({keys::k});
  keyboard_.type({keys::l});
  keyboard_.release({keys::super});
  waitForPresses();
  EXPECT_THAT(pressed_, ElementsAre(1, 2, 1, 2));
}

TEST_F(X11HotKeysTest, AServerThatGoesAwayRefusesEveryHotKey) {
  const auto first = registerKey(keyK, hot_key_modifiers::command, 1);
  const auto second = registerKey(keyL, hot_key_modifiers::command, 2);
  server_.end();
  runMainLoopUntil([&] { return refused_.size() == 2; });
  EXPECT_THAT(refused_, ElementsAre(Pair(first, HotKeyStatus::serviceFailed),
                                    Pair(second, HotKeyStatus::serviceFailed)));
  hotKeys_->unregisterHotKey(first);
  EXPECT_EQ(tryToRegister(keyK, 0, 3).error(), HotKeyStatus::serviceFailed);
  // Nothing is left that would keep the main loop busy.
  EXPECT_FALSE(g_main_context_iteration(nullptr, false));
}

TEST_F(X11HotKeysTest, AServerThatGoesAwayUnnoticedRefusesARegistrationAndThenEveryHotKey) {
  const auto first = registerKey(keyK, hot_key_modifiers::command, 1);
  server_.end();
  EXPECT_EQ(tryToRegister(keyL, 0, 2).error(), HotKeyStatus::serviceFailed);
  EXPECT_THAT(refused_, IsEmpty());
  runMainLoopUntil([&] { return !refused_.empty(); });
  EXPECT_THAT(refused_, ElementsAre(Pair(first, HotKeyStatus::serviceFailed)));
}

TEST_F(X11HotKeysTest, ASuccessorOfTheServerHasTheNextHotKeys) {
  registerKey(keyK, hot_key_modifiers::command, 1);
  server_.end();
  runMainLoopUntil([&] { return !refused_.empty(); });
  const XServer successor(display());
  registerKey(keyK, hot_key_modifiers::command, 2);
  XKeyboard(display()).type({keys::super, keys::k});
  runMainLoopUntil([&] { return !pressed_.empty(); });
  EXPECT_THAT(pressed_, ElementsAre(2));
}

TEST(X11HotKeys, WithoutAServerARegistrationFails) {
  X11HotKeys hotKeys(":no such display");
  EXPECT_EQ(hotKeys.registerHotKey({.keyCode = keyK, .id = {}, .description = {}}).error(),
            HotKeyStatus::serviceFailed);
}

}  // namespace
}  // namespace quillmar
