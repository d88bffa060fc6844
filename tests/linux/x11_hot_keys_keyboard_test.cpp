// How hot keys on X11 follow changes of the keyboard.

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/linux/x11_hot_keys_fixture.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

constexpr std::uint32_t qKey = 12;

using X11HotKeysKeyboardTest = X11HotKeysTest;

TEST_F(X11HotKeysKeyboardTest, HotKeysStayOnTheirKeysInEveryLayout) {
  registerKey(keyK, hot_key_modifiers::command, 1);
  registerKey(qKey, hot_key_modifiers::command | hot_key_modifiers::shift, 2);
  changeKeyboard({"setxkbmap", "fr"});
  type({keys::super, keys::k});
  type({keys::super, keys::shift, keys::q});
  changeKeyboard({"setxkbmap", "us,ru", "-option", "grp:menu_toggle"});
  keyboard_.type({keys::menu});
  ASSERT_EQ(keyboard_.state() & 0x6000, 0x2000);
  type({keys::super, keys::k});
  type({keys::super, keys::shift, keys::q});
  EXPECT_THAT(pressed_, ElementsAre(1, 2, 1, 2));
  EXPECT_THAT(refused_, IsEmpty());
}

TEST_F(X11HotKeysKeyboardTest, FollowsNumLockToAnotherModifier) {
  registerKey(keyK, hot_key_modifiers::command, 1);
  changeKeyboard({"xmodmap", "-e", "remove Mod2 = Num_Lock", "-e", "add Mod3 = Num_Lock"});
  keyboard_.type({keys::numLock});
  ASSERT_EQ(keyboard_.state(), mod3);
  type({keys::super, keys::k});
  EXPECT_THAT(pressed_, ElementsAre(1));
  OtherProgramWithGrabs other(display());
  EXPECT_EQ(other.grab(keys::k, mod4 | mod2), 0);
}

TEST_F(X11HotKeysKeyboardTest, FollowsSuperToAnotherModifier) {
  registerKey(keyK, hot_key_modifiers::command, 1);
  changeKeyboard({"xmodmap", "-e", "clear Mod4", "-e", "clear Mod3", "-e", "add Mod3 = Super_L"});
  type({keys::super, keys::k});
  EXPECT_THAT(pressed_, ElementsAre(1));
}

TEST_F(X11HotKeysKeyboardTest, AKeyboardWithoutSuperHasNoSuchKeys) {
  ASSERT_TRUE(runCommand({"xmodmap", "-e", "clear Mod4"}, {"DISPLAY=" + display()}));
  EXPECT_EQ(tryToRegister(keyK, hot_key_modifiers::command, 1).error(), HotKeyStatus::noSuchKey);
  EXPECT_TRUE(tryToRegister(keyK, hot_key_modifiers::option, 1).ok());
}

TEST_F(X11HotKeysKeyboardTest, AHotKeyKeepsTheGrabThatItSharesWithAnUnregisteredOne) {
  ASSERT_TRUE(runCommand({"xmodmap", "-e", "clear Mod4", "-e", "add Mod1 = Super_L"},
                         {"DISPLAY=" + display()}));
  const auto reference = registerKey(keyK, hot_key_modifiers::option, 1);
  hotKeys_->unregisterHotKey(reference);
  registerKey(keyK, hot_key_modifiers::command, 2);
  runMainLoopWhileReady();
  type({keys::super, keys::k});
  EXPECT_THAT(pressed_, ElementsAre(2));
}

TEST_F(X11HotKeysKeyboardTest, AHotKeyWaitsForAModifierThatTheKeyboardLostForAWhile) {
  registerKey(keyK, hot_key_modifiers::command, 1);
  changeKeyboard({"xmodmap", "-e", "clear Mod4"});
  type({keys::super, keys::k});
  EXPECT_THAT(pressed_, IsEmpty());
  changeKeyboard({"xmodmap", "-e", "add Mod4 = Super_L"});
  type({keys::super, keys::k});
  EXPECT_THAT(pressed_, ElementsAre(1));
  EXPECT_THAT(refused_, IsEmpty());
}

TEST_F(X11HotKeysKeyboardTest, AKeyThatIsTakenAfterAChangeOfTheKeyboardIsRefused) {
  const auto taken = registerKey(keyK, hot_key_modifiers::command, 1);
  registerKey(keyL, hot_key_modifiers::command, 2);
  OtherProgramWithGrabs other(display());
  ASSERT_EQ(other.grab(keys::k, mod3), 0);
  changeKeyboard({"xmodmap", "-e", "clear Mod4", "-e", "clear Mod3", "-e", "add Mod3 = Super_L"});
  EXPECT_THAT(refused_, ElementsAre(Pair(taken, HotKeyStatus::keyTaken)));
  type({keys::super, keys::k});
  type({keys::super, keys::l});
  EXPECT_THAT(pressed_, ElementsAre(2));
  // None of its grabs is left.
  EXPECT_EQ(other.grab(keys::k, XCB_MOD_MASK_ANY), 0);
}

TEST_F(X11HotKeysKeyboardTest, FollowsTheKeyboardThatTheUserTurnsTo) {
  registerKey(keyK, hot_key_modifiers::command, 1);
  // The server uses the keyboard of the tests from its first key on.
  const std::string keyboardOfTests = "5";
  std::string description = runCommand({"xkbcomp", display(), "-"}).value_or("");
  const std::string numLock = "modifier_map Mod2 { <NMLK> }";
  const auto place = description.find(numLock);
  ASSERT_NE(place, std::string::npos) << description;
  description.replace(place, numLock.size(), "modifier_map Mod3 { <NMLK> }");
  ASSERT_TRUE(runCommand({"xkbcomp", "-i", keyboardOfTests, "-", display()}, {}, description));
  keyboard_.type({keys::numLock});
  ASSERT_EQ(keyboard_.state(), mod3);
  // The reply to this request follows the event for the other keyboard.
  registerKey(keyL, hot_key_modifiers::command, 2);
  runMainLoopWhileReady();
  type({keys::super, keys::k});
  EXPECT_THAT(pressed_, ElementsAre(1));
}

}  // namespace
}  // namespace quillmar
