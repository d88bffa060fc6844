#include "platform/linux/status_item/key_equivalent_shortcut.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

std::vector<std::string> shortcut(const std::string& character, std::uint64_t mask = 0) {
  return shortcutForKeyEquivalent({.character = character, .modifierMask = mask});
}

TEST(KeyEquivalentShortcut, NamesModifiersInTheProtocolsOrder) {
  EXPECT_THAT(
      shortcut("a", modifiers::command | modifiers::shift | modifiers::option | modifiers::control),
      ElementsAre("Control", "Alt", "Shift", "Super", "a"));
  EXPECT_THAT(shortcut("q", modifiers::command), ElementsAre("Super", "q"));
  EXPECT_THAT(shortcut("q"), ElementsAre("q"));
}

TEST(KeyEquivalentShortcut, IgnoresOtherModifierBits) {
  constexpr std::uint64_t capsLock = 0x10000;
  constexpr std::uint64_t numericPad = 0x200000;
  constexpr std::uint64_t function = 0x800000;
  EXPECT_THAT(shortcut("a", capsLock | numericPad | function | modifiers::control),
              ElementsAre("Control", "a"));
}

TEST(KeyEquivalentShortcut, AnUpperCaseLetterIsShiftWithTheLowerCaseOne) {
  EXPECT_THAT(shortcut("A", modifiers::command), ElementsAre("Shift", "Super", "a"));
  EXPECT_THAT(shortcut("A", modifiers::shift), ElementsAre("Shift", "a"));
  EXPECT_THAT(shortcut("Ä"), ElementsAre("Shift", "adiaeresis"));
  EXPECT_THAT(shortcut("Ж"), ElementsAre("Shift", "Cyrillic_zhe"));
}

TEST(KeyEquivalentShortcut, NamesPunctuationByItsKeysym) {
  EXPECT_THAT(shortcut(","), ElementsAre("comma"));
  EXPECT_THAT(shortcut("["), ElementsAre("bracketleft"));
  EXPECT_THAT(shortcut(" "), ElementsAre("space"));
  EXPECT_THAT(shortcut("/"), ElementsAre("slash"));
  EXPECT_THAT(shortcut("@"), ElementsAre("at"));
  EXPECT_THAT(shortcut("`"), ElementsAre("grave"));
  EXPECT_THAT(shortcut("~"), ElementsAre("asciitilde"));
  EXPECT_THAT(shortcut("5"), ElementsAre("5"));
}

TEST(KeyEquivalentShortcut, NamesLatin1AndOtherCharacters) {
  EXPECT_THAT(shortcut("\u00A0"), ElementsAre("nobreakspace"));
  EXPECT_THAT(shortcut("ß"), ElementsAre("ssharp"));
  EXPECT_THAT(shortcut("÷"), ElementsAre("division"));
  EXPECT_THAT(shortcut("ÿ"), ElementsAre("ydiaeresis"));
  EXPECT_THAT(shortcut("€"), ElementsAre("EuroSign"));
  EXPECT_THAT(shortcut("😀"), ElementsAre("U0001F600"));
}

TEST(KeyEquivalentShortcut, NamesKeysThatWriteNothing) {
  EXPECT_THAT(shortcut("\r"), ElementsAre("Return"));
  EXPECT_THAT(shortcut("\t"), ElementsAre("Tab"));
  EXPECT_THAT(shortcut("\x19"), ElementsAre("Shift", "Tab"));
  EXPECT_THAT(shortcut("\x1B"), ElementsAre("Escape"));
  EXPECT_THAT(shortcut("\b"), ElementsAre("BackSpace"));
  EXPECT_THAT(shortcut("\x7F"), ElementsAre("BackSpace"));
}

TEST(KeyEquivalentShortcut, NamesFunctionKeys) {
  EXPECT_THAT(shortcut("\uF700"), ElementsAre("Up"));
  EXPECT_THAT(shortcut("\uF703"), ElementsAre("Right"));
  EXPECT_THAT(shortcut("\uF704"), ElementsAre("F1"));
  EXPECT_THAT(shortcut("\uF708"), ElementsAre("F5"));
  EXPECT_THAT(shortcut("\uF726"), ElementsAre("F35"));
  EXPECT_THAT(shortcut("\uF727"), ElementsAre("Insert"));
  EXPECT_THAT(shortcut("\uF728"), ElementsAre("Delete"));
  EXPECT_THAT(shortcut("\uF729"), ElementsAre("Home"));
  EXPECT_THAT(shortcut("\uF72B"), ElementsAre("End"));
  EXPECT_THAT(shortcut("\uF72C"), ElementsAre("Prior"));
  EXPECT_THAT(shortcut("\uF72D"), ElementsAre("Next"));
  EXPECT_THAT(shortcut("\uF746"), ElementsAre("Help"));
}

TEST(KeyEquivalentShortcut, QtPanelsGetTheTextOfAKeySequence) {
  const auto key = [](const std::string& character) {
    return shortcutForKeyEquivalent({.character = character, .modifierMask = modifiers::command},
                                    ShortcutKeyNames::qtKeys);
  };
  EXPECT_THAT(key("q"), ElementsAre("Super", "q"));
  EXPECT_THAT(key(","), ElementsAre("Super", ","));
  EXPECT_THAT(key("€"), ElementsAre("Super", "€"));
  EXPECT_THAT(key("Ä"), ElementsAre("Shift", "Super", "ä"));
  EXPECT_THAT(key("+"), ElementsAre("Super", "plus"));
  EXPECT_THAT(key("-"), ElementsAre("Super", "minus"));
  EXPECT_THAT(key(" "), ElementsAre("Super", "space"));
  EXPECT_THAT(key("\x1B"), ElementsAre("Super", "Esc"));
  EXPECT_THAT(key("\r"), ElementsAre("Super", "Return"));
  EXPECT_THAT(key("\uF708"), ElementsAre("Super", "F5"));
  EXPECT_THAT(key("\uF728"), ElementsAre("Super", "Del"));
  EXPECT_THAT(key("\uF72C"), ElementsAre("Super", "PgUp"));
  EXPECT_THAT(key("\uF760"), IsEmpty());
}

TEST(KeyEquivalentShortcut, TakesTheFirstOfSeveralCharacters) {
  EXPECT_THAT(shortcut("xyz"), ElementsAre("x"));
  EXPECT_THAT(shortcut("éa"), ElementsAre("eacute"));
}

TEST(KeyEquivalentShortcut, IsEmptyWhereNoKeyProducesTheCharacter) {
  EXPECT_THAT(shortcut("", modifiers::command), IsEmpty());
  EXPECT_THAT(shortcut(std::string(1, '\0'), modifiers::command), IsEmpty());
  EXPECT_THAT(shortcut("\x01", modifiers::command), IsEmpty());
  EXPECT_THAT(shortcut("\xFF", modifiers::command), IsEmpty());
  EXPECT_THAT(shortcut("\xE2\x82", modifiers::command), IsEmpty());
  EXPECT_THAT(shortcut("\uF760", modifiers::command), IsEmpty());
}

}  // namespace
}  // namespace quillmar
