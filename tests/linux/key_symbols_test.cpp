#include "platform/linux/hot_keys/key_symbols.h"

#include <cstdint>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/virtual_key_codes.h"
#include "tests/virtual_keys.h"

namespace quillmar {
namespace {

// Virtual key codes, named as on a US keyboard.
constexpr std::uint32_t leftBracket = 33;
constexpr std::uint32_t tab = 48;
constexpr std::uint32_t f13 = 105;
constexpr std::uint32_t help = 114;

KeySymbols symbols(const std::string& layout, std::uint32_t keyCode) {
  return keySymbolsOfLayout(layout).at(keyCode);
}

TEST(KeySymbols, AreThoseOfTheLayout) {
  EXPECT_EQ(symbols("us", keyQ), (KeySymbols{"q", ""}));
  EXPECT_EQ(symbols("fr", keyQ), (KeySymbols{"a", ""}));
  EXPECT_EQ(symbols("de", keyZ), (KeySymbols{"y", ""}));
}

TEST(KeySymbols, NameTheShiftedCharacterUnlessItIsTheCapital) {
  EXPECT_EQ(symbols("us", key2), (KeySymbols{"2", "at"}));
  EXPECT_EQ(symbols("fr", key2), (KeySymbols{"eacute", "2"}));
  EXPECT_EQ(symbols("us", keyA), (KeySymbols{"a", ""}));
  EXPECT_EQ(symbols("us", keySpace), (KeySymbols{"space", ""}));
  EXPECT_EQ(symbols("us", tab), (KeySymbols{"Tab", ""}));
}

TEST(KeySymbols, PreferALatinLayout) {
  EXPECT_EQ(symbols("us,ru", keyA), (KeySymbols{"a", ""}));
  EXPECT_EQ(symbols("ru,us", keyA), (KeySymbols{"a", ""}));
  EXPECT_EQ(symbols("ru", keyA).plain, "Cyrillic_ef");
}

TEST(KeySymbols, IncludeDeadKeys) {
  EXPECT_EQ(symbols("fr", leftBracket).plain, "dead_circumflex");
}

TEST(KeySymbols, OfKeypadDigitsAreTheDigits) {
  EXPECT_EQ(symbols("us", keypad7), (KeySymbols{"KP_7", ""}));
}

TEST(KeySymbols, OfKeysThatPcKeyboardsLackAreThoseOfTheKeymap) {
  EXPECT_EQ(symbols("us", f13).plain, "XF86Tools");
  EXPECT_EQ(symbols("us", help).plain, "Insert");
}

TEST(KeySymbols, AreMissingForModifiersAndKeysWithoutASymbol) {
  const KeySymbolTable us = keySymbolsOfLayout("us");
  std::set<std::string> missing;
  for (const VirtualKey& key : virtualKeys()) {
    if (!us.contains(key.code)) missing.emplace(key.xkbName);
  }
  EXPECT_THAT(missing, testing::UnorderedElementsAre("AB11", "AE13", "CAPS", "FK19", "I472", "JPCM",
                                                     "LALT", "LCTL", "LFSH", "LWIN", "RALT", "RCTL",
                                                     "RTSH", "RWIN"));
}

TEST(KeySymbols, OfATextThatIsNoKeymapAreMissing) {
  EXPECT_EQ(keySymbolsOfKeymap("text"), KeySymbolTable());
  EXPECT_EQ(keySymbolsOfLayout("nonexistent"), KeySymbolTable());
}

}  // namespace
}  // namespace quillmar
