// What the model hears of the keys of a real keyboard.

#include "platform/qt/windows/key_presses.h"

#include <QKeyEvent>
#include <optional>

#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon.h>

namespace quillmar {
namespace {

std::optional<KeyPress> press(quint32 scanCode, const char* keysym,
                              Qt::KeyboardModifiers modifiers = {}) {
  const quint32 symbol = xkb_keysym_from_name(keysym, XKB_KEYSYM_NO_FLAGS);
  return keyPressOf(
      QKeyEvent(QEvent::KeyPress, Qt::Key_unknown, modifiers, scanCode, symbol, 0, {}));
}

KeyPress expected(std::uint16_t keyCode, const std::string& character, std::uint64_t held = 0) {
  return {.keyCode = keyCode, .character = character, .modifiers = held};
}

TEST(KeyPressesTest, ALetterHasItsPlaceAndWhatTheLayoutMakesOfIt) {
  EXPECT_EQ(press(38, "a"), expected(0, "a"));
  EXPECT_EQ(press(38, "q"), expected(0, "q"));
  EXPECT_EQ(press(38, "Cyrillic_ef"), expected(0, "ф"));
  EXPECT_EQ(press(34, "udiaeresis"), expected(33, "ü"));
}

TEST(KeyPressesTest, ADeadKeyHasTheCharacterThatItWritesBeforeASpace) {
  EXPECT_EQ(press(34, "dead_circumflex"), expected(33, "^"));
  EXPECT_EQ(press(34, "dead_diaeresis", Qt::ShiftModifier), expected(33, "¨", modifiers::shift));
  EXPECT_EQ(press(48, "dead_acute"), expected(39, "´"));
}

// Without a display the layout is not known, and the symbol of the event counts.
TEST(KeyPressesTest, AShiftedLetterIsLowerCaseAndAShiftedDigitWhatItWrites) {
  EXPECT_EQ(press(38, "A", Qt::ShiftModifier), expected(0, "a", modifiers::shift));
  EXPECT_EQ(press(10, "exclam", Qt::ShiftModifier), expected(18, "!", modifiers::shift));
}

TEST(KeyPressesTest, EachModifierHasItsBit) {
  EXPECT_EQ(press(38, "a", Qt::ControlModifier)->modifiers, modifiers::control);
  EXPECT_EQ(press(38, "a", Qt::AltModifier)->modifiers, modifiers::option);
  EXPECT_EQ(press(38, "a", Qt::MetaModifier)->modifiers, modifiers::command);
  EXPECT_EQ(press(38, "a", Qt::ControlModifier | Qt::ShiftModifier)->modifiers,
            modifiers::control | modifiers::shift);
  EXPECT_EQ(press(87, "KP_1", Qt::KeypadModifier)->modifiers, 0U);
}

TEST(KeyPressesTest, KeysThatWriteNothingHaveACharacterThatStandsForThem) {
  EXPECT_EQ(press(36, "Return"), expected(36, "\r"));
  EXPECT_EQ(press(22, "BackSpace"), expected(51, "\x7f"));
  EXPECT_EQ(press(119, "Delete"), expected(117, "\uf728"));
  EXPECT_EQ(press(9, "Escape"), expected(53, "\x1b"));
  EXPECT_EQ(press(111, "Up"), expected(126, "\uf700"));
  EXPECT_EQ(press(72, "F6"), expected(97, "\uf709"));
  EXPECT_EQ(press(118, "Insert"), expected(114, "\uf727"));
}

TEST(KeyPressesTest, BackTabIsTabWithShift) {
  EXPECT_EQ(press(23, "ISO_Left_Tab", Qt::ShiftModifier), expected(48, "\t", modifiers::shift));
}

TEST(KeyPressesTest, AFunctionKeyIsKnownByItsPlaceWhereTheLayoutGivesItAnotherMeaning) {
  EXPECT_EQ(press(191, "XF86Tools"), expected(105, "\uf710"));
}

TEST(KeyPressesTest, TheKeypadWritesWhatItsKeysShow) {
  EXPECT_EQ(press(104, "KP_Enter"), expected(76, "\r"));
  EXPECT_EQ(press(87, "KP_1"), expected(83, "1"));
  EXPECT_EQ(press(87, "KP_End"), expected(83, "\uf72b"));
  EXPECT_EQ(press(86, "KP_Add"), expected(69, "+"));
}

TEST(KeyPressesTest, AKeyThatIsMappedToAnotherOneMeansThatOne) {
  EXPECT_EQ(press(66, "Escape"), expected(57, "\x1b"));
}

TEST(KeyPressesTest, AKeyThatAnInputMethodPassesOnHasNoPlace) {
  EXPECT_EQ(press(0, "a"), (KeyPress{.keyCode = {}, .character = "a", .modifiers = 0}));
}

TEST(KeyPressesTest, ModifiersAndLocksAreNoPresses) {
  EXPECT_EQ(press(50, "Shift_L"), std::nullopt);
  EXPECT_EQ(press(133, "Super_L"), std::nullopt);
  EXPECT_EQ(press(108, "ISO_Level3_Shift"), std::nullopt);
  EXPECT_EQ(press(66, "Caps_Lock"), std::nullopt);
  EXPECT_EQ(press(77, "Num_Lock"), std::nullopt);
  EXPECT_EQ(press(0, "NoSymbol"), std::nullopt);
}

}  // namespace
}  // namespace quillmar
