#include "platform/text.h"

#include <string>
#include <string_view>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmar::text {
namespace {

using namespace std::string_view_literals;

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::string_view family = "👨‍👩‍👧‍👦";  // four people and three joiners

TEST(Text, TheFirstCharactersAreWhole) {
  constexpr std::size_t plenty = 1000;
  EXPECT_EQ(text::firstCharacters("abc", 2, plenty), "ab");
  EXPECT_EQ(text::firstCharacters("abc", 3, plenty), "abc");
  EXPECT_EQ(text::firstCharacters("äöü", 2, plenty), "äö");
  EXPECT_EQ(text::firstCharacters("e\u0301x", 1, plenty), "e\u0301");
  EXPECT_EQ(text::firstCharacters("a\r\nb", 2, plenty), "a\r\n");
  EXPECT_EQ(text::firstCharacters("👨‍👩‍👧x", 1, plenty), "👨‍👩‍👧");
  EXPECT_EQ(text::firstCharacters("ä", 0, plenty), "");
}

TEST(Text, OnlyTheFirstCharactersThatFitAreTaken) {
  EXPECT_EQ(text::firstCharacters("abc", 3, 2), "ab");
  EXPECT_EQ(text::firstCharacters("äöü", 3, 5), "äö");
  EXPECT_EQ(text::firstCharacters("xe\u0301", 2, 3), "x");
  EXPECT_EQ(text::firstCharacters("xe\u0301", 2, 4), "xe\u0301");
  // This one has no boundary in time.
  EXPECT_EQ(text::firstCharacters("e\u0301\u0301", 1, 4), "e\u0301");
}

TEST(Text, TakesWellFormedUtf8AsValid) {
  for (const std::string_view bytes : {""sv, "a\0b"sv, "é€😀"sv, "\xF4\x8F\xBF\xBF"sv}) {
    EXPECT_TRUE(isValidUtf8(bytes)) << bytes;
  }
}

TEST(Text, TakesNoIllFormedUtf8AsValid) {
  for (const std::string_view bytes :
       {"\xFF"sv, "\x80"sv, "\xC3"sv, "\xC0\x80"sv, "\xED\xA0\x80"sv, "\xF4\x90\x80\x80"sv}) {
    EXPECT_FALSE(isValidUtf8(bytes)) << bytes;
  }
}

TEST(Text, TheBeginningAndTheEndOfATextHoldWholeCodePoints) {
  EXPECT_EQ(text::firstBytes("aé€", 6), "aé€");
  EXPECT_EQ(text::firstBytes("aé€", 5), "aé");
  EXPECT_EQ(text::firstBytes("aé€", 3), "aé");
  EXPECT_EQ(text::firstBytes("aé€", 2), "a");
  EXPECT_EQ(text::firstBytes("é", 1), "");
  EXPECT_EQ(text::lastBytes("aé€", 6), "aé€");
  EXPECT_EQ(text::lastBytes("aé€", 5), "é€");
  EXPECT_EQ(text::lastBytes("aé€", 4), "€");
  EXPECT_EQ(text::lastBytes("aé€", 2), "");
}

TEST(Text, EveryNewlineBecomesASpaceOnOneLine) {
  EXPECT_EQ(text::onOneLine("ä\nb\vc\fd\re\r\nf\u0085g\u2028h\u2029i\n"), "ä b c d e f g h i ");
  EXPECT_EQ(text::onOneLine("\n\n"), "  ");
  EXPECT_EQ(text::onOneLine("tab\tstays"), "tab\tstays");
}

TEST(Text, SplitDropsEmptyParts) {
  EXPECT_THAT(text::split(":a::b c:", ':'), ElementsAre("a", "b c"));
  EXPECT_THAT(text::split("a", ':'), ElementsAre("a"));
  EXPECT_THAT(text::split("::", ':'), IsEmpty());
}

TEST(Text, TrimsSpacesAndTabsButNoNewlinesAsWhitespace) {
  EXPECT_EQ(trimWhitespace(" \t a b \t "), "a b");
  EXPECT_EQ(trimWhitespace(" \n a \n "), "\n a \n");
  EXPECT_EQ(trimWhitespace("\u0085a\u2028"), "\u0085a\u2028");
  EXPECT_EQ(trimWhitespace(" \t "), "");
  EXPECT_EQ(trimWhitespace(""), "");
}

TEST(Text, TrimsEverySpaceSeparator) {
  for (const std::string_view space :
       {"\u0020", "\u00A0", "\u1680", "\u2000", "\u2001", "\u2002", "\u2003", "\u2004", "\u2005",
        "\u2006", "\u2007", "\u2008", "\u2009", "\u200A", "\u202F", "\u205F", "\u3000"}) {
    const std::string padded = std::string(space) + "a" + std::string(space);
    EXPECT_EQ(trimWhitespace(padded), "a") << padded;
    EXPECT_EQ(trimWhitespaceAndNewlines(padded), "a") << padded;
  }
}

TEST(Text, TrimsNoInvisibleCharactersThatAreNotSpaces) {
  for (const std::string_view kept : {"\u200B", "\u2060", "\uFEFF", "\u180E", "\x1f", "\x7f"}) {
    EXPECT_EQ(trimWhitespaceAndNewlines(kept), kept);
  }
  EXPECT_EQ(trimWhitespaceAndNewlines(" \0 "sv), "\0"sv);
}

TEST(Text, TrimsEveryNewline) {
  EXPECT_EQ(
      trimWhitespaceAndNewlines("\n\v\f\r\u0085\u2028\u2029 \ta\nb\r\n\u2029\u2028\u0085\f\v"),
      "a\nb");
  EXPECT_EQ(trimWhitespaceAndNewlines("\r\n \n"), "");
}

TEST(Text, KeepsCharactersThatShareBytesWithNewlines) {
  EXPECT_EQ(trimWhitespaceAndNewlines("Å\u2026"), "Å\u2026");
  EXPECT_FALSE(containsNewline("Å\u2026\u0084\u2027"));
}

TEST(Text, FindsEveryNewline) {
  for (const std::string_view newline : {"\n", "\v", "\f", "\r", "\u0085", "\u2028", "\u2029"}) {
    EXPECT_TRUE(containsNewline("é" + std::string(newline) + "é"));
  }
  EXPECT_FALSE(containsNewline("one line\t\x1f"));
}

TEST(Text, CountsAsciiCharactersFromTheEnd) {
  EXPECT_EQ(lastCharacters("abcdef", 3), "def");
  EXPECT_EQ(lastCharacters("abc", 3), "abc");
  EXPECT_EQ(lastCharacters("abc", 1000), "abc");
  EXPECT_EQ(lastCharacters("abc", 0), "");
  EXPECT_EQ(lastCharacters("", 3), "");
  EXPECT_EQ(lastCharacters("a\0b\0c"sv, 3), "b\0c"sv);
}

TEST(Text, CountsAnEmojiOfSeveralPeopleAsOneCharacter) {
  const std::string text = "ab" + std::string(family) + "c";
  EXPECT_EQ(lastCharacters(text, 1), "c");
  EXPECT_EQ(lastCharacters(text, 2), std::string(family) + "c");
  EXPECT_EQ(lastCharacters(text, 3), "b" + std::string(family) + "c");
  EXPECT_EQ(lastCharacters(text, 9), text);
}

TEST(Text, CountsFlagsByPairsOfLettersFromTheirStart) {
  EXPECT_EQ(lastCharacters("🇩🇪🇫🇷🇮🇹", 2), "🇫🇷🇮🇹");
}

TEST(Text, KeepsCombiningMarksWithTheirLetter) {
  EXPECT_EQ(lastCharacters("xe\u0301\u0323o\u0308", 2), "e\u0301\u0323o\u0308");
  EXPECT_EQ(lastCharacters("\u0600"
                           "12345",
                           5),
            "\u0600"
            "12345");  // a mark that goes before
}

TEST(Text, CountsACarriageReturnWithItsLineFeedAsOneCharacter) {
  EXPECT_EQ(lastCharacters("ab\r\nc", 2), "\r\nc");
  EXPECT_EQ(lastCharacters("ab\r\nc", 3), "b\r\nc");
  EXPECT_EQ(lastCharacters("ab\n\rc", 2), "\rc");
}

TEST(Text, FindsTheLastCharactersOfALongTextOfMarks) {
  std::string text = "start";
  for (int i = 0; i < 500'000; ++i) text += "o\u0308";
  std::string last;
  for (int i = 0; i < 400; ++i) last += "o\u0308";
  EXPECT_EQ(lastCharacters(text, 400), last);
}

TEST(Text, LowersLettersOfEveryAlphabet) {
  EXPECT_EQ(lowercased("Copy TODAY'S Date 1"), "copy today's date 1");
  EXPECT_EQ(lowercased("ÄÖÜ ÉÈ ЖУК ΔΕΛΤΑ 𐐀"), "äöü éè жук δελτα 𐐨");
  EXPECT_EQ(lowercased(""), "");
}

TEST(Text, LowersByTheFullMapping) {
  EXPECT_EQ(lowercased("ΟΔΥΣΣΕΥΣ"), "οδυσσευς");  // a final sigma
  EXPECT_EQ(lowercased("İI"), "i\u0307i");        // longer than before, and no Turkish rules
  EXPECT_EQ(lowercased("\u1E9E\u2126"), "ß\u03C9");
  EXPECT_EQ(lowercased("İİİİİİİİ"), "i\u0307i\u0307i\u0307i\u0307i\u0307i\u0307i\u0307i\u0307");
}

TEST(Text, FindsTheFirstCodePoint) {
  EXPECT_EQ(firstCodePoint("k1"), U'k');
  EXPECT_EQ(firstCodePoint("é"), U'é');
  EXPECT_EQ(firstCodePoint("😀x"), U'😀');
  EXPECT_EQ(firstCodePoint(""), U'\0');
  EXPECT_EQ(firstCodePoint("\xFF"), U'\0');
}

TEST(Text, UppercasesByTheFullMapping) {
  EXPECT_EQ(uppercased("k 1"), "K 1");
  EXPECT_EQ(uppercased("äéжφ𐐨"), "ÄÉЖΦ𐐀");
  EXPECT_EQ(uppercased("ß"), "SS");
  EXPECT_EQ(uppercased("\uFB03"), "FFI");  // one ligature, three letters
  EXPECT_EQ(uppercased("\u0390"), "\u0399\u0308\u0301");
  EXPECT_EQ(uppercased("i"), "I");  // no Turkish rules
  EXPECT_EQ(uppercased(""), "");
}

TEST(Text, EscapesControlCharactersAndThoseThatBreakOrTurnALine) {
  EXPECT_EQ(escapingControlCharacters("plain é 😀\\"), "plain é 😀\\");
  EXPECT_EQ(escapingControlCharacters("a\n\t\r\b\f\x1b\x7f\u0085\u2028\u202eb"),
            "a\\n\\t\\r\\b\\f\\u001b\\u007f\\u0085\\u2028\\u202eb");
  EXPECT_EQ(escapingControlCharacters("\0"sv), "\\u0000");
  EXPECT_EQ(escapingControlCharacters("\xFF"), "\uFFFD");
}

TEST(Text, ReplacesWhatNoBusCarries) {
  EXPECT_EQ(replacingInvalidCharacters("plain é 😀\n"), "plain é 😀\n");
  EXPECT_EQ(replacingInvalidCharacters("a\0b"sv), "a\uFFFDb");
  EXPECT_EQ(replacingInvalidCharacters("a\xFF\xFE"
                                       "b"),
            "a\uFFFD\uFFFDb");
  EXPECT_EQ(replacingInvalidCharacters("\xE2\x82"), "\uFFFD");  // the beginning of a character
  EXPECT_TRUE(isValidUtf8(replacingInvalidCharacters("\xED\xA0\x80\xC3(")));
}

}  // namespace
}  // namespace quillmar::text
