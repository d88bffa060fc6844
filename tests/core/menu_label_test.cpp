#include "platform/menu_label.h"

#include <string>

#include <gtest/gtest.h>

#include "platform/text.h"
#include "platform/visible_text.h"

namespace quillmar {
namespace {

std::string repeated(const std::string& text, std::size_t count) {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

TEST(MenuLabel, IsTheTitleOnOneLine) {
  EXPECT_EQ(menuLabel("Ping & <host> _x"), "Ping & <host> _x");
  EXPECT_EQ(menuLabel(""), "");
  EXPECT_EQ(menuLabel("one\r\ntwo\nthree\tfour\u2028five"), "one two three four five");
}

TEST(MenuLabel, ShowsWhatAReaderWouldNotSee) {
  EXPECT_EQ(menuLabel("rm \u202Egpj.x\x07"), "rm ‹U+202E›gpj.x‹U+0007›");
  EXPECT_EQ(menuLabel("👨‍👩‍👧 שלום"), "👨‍👩‍👧 שלום");
}

TEST(MenuLabel, ReplacesWhatNoBusTakes) {
  EXPECT_EQ(menuLabel(std::string("a\0b\xFF", 4)), "a\uFFFDb\uFFFD");
}

TEST(MenuLabel, HasAtMostFiveHundredCharacters) {
  for (const std::string character : {"x", "ä", "e\u0301", "👨‍👩‍👧‍👦"}) {
    EXPECT_EQ(menuLabel(repeated(character, 500)), repeated(character, 500));
    EXPECT_EQ(menuLabel(repeated(character, 501)), repeated(character, 499) + "…");
  }
}

TEST(MenuLabel, StaysShortWhenHiddenCharactersAreShown) {
  const std::string label = menuLabel(repeated("\u202E", 500));
  EXPECT_EQ(text::lastCharacters(label, 500), label);
  EXPECT_TRUE(label.ends_with("…"));
}

TEST(MenuLabel, HasAtMostSixteenKilobytes) {
  const std::string label = menuLabel("ab" + repeated("\u0301", 1'000'000));
  EXPECT_EQ(label, "a…");
  const std::string endless = menuLabel("a" + repeated("\u0301", 1'000'000));
  EXPECT_LE(endless.size(), maximumLabelBytes);
  EXPECT_TRUE(text::isValidUtf8(endless));
  EXPECT_TRUE(endless.ends_with("\u0301…"));
}

TEST(MenuLabel, HasAtMostTheBytesThatAreAllowed) {
  EXPECT_EQ(menuLabel("abcdefghij", 10), "abcdefghij");
  EXPECT_EQ(menuLabel("abcdefghijk", 10), "abcdefg…");
  EXPECT_EQ(menuLabel("ääääää", 10), "äää…");
}

TEST(VisibleText, ShowsTheNumberOfEachHiddenCharacter) {
  EXPECT_EQ(text::withVisibleCharacters("a\u200Bb\u3164c"), "a‹U+200B›b‹U+3164›c");
  EXPECT_EQ(text::withVisibleCharacters("\U000E0041"), "‹U+E0041›");
  EXPECT_EQ(text::withVisibleCharacters("a\u200Db"), "a‹U+200D›b");
  EXPECT_EQ(text::withVisibleCharacters("a\u2028b\n\t"), "a‹U+2028›b\n\t");
}

TEST(VisibleText, LeavesWhatIsSeen) {
  for (const char* seen : {"plain", "\u0600", "می\u200Cخواهم", "👨‍👩‍👧", "e\u0301"}) {
    EXPECT_EQ(text::withVisibleCharacters(seen), seen);
  }
}

}  // namespace
}  // namespace quillmar
