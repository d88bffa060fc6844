#include "platform/visible_text.h"

#include <gtest/gtest.h>

namespace quillmar::text {
namespace {

using namespace std::string_view_literals;

TEST(VisibleText, ShowsInvisibleCharactersAsTheirCodePoints) {
  EXPECT_EQ(withVisibleCharacters("a\u202eb"), "a‹U+202E›b");
  EXPECT_EQ(withVisibleCharacters("\0\r\x1b\x7f\u0085"sv),
            "‹U+0000›‹U+000D›‹U+001B›‹U+007F›‹U+0085›");
  EXPECT_EQ(withVisibleCharacters("\u200b\u2060\ufeff\u00ad"), "‹U+200B›‹U+2060›‹U+FEFF›‹U+00AD›");
  EXPECT_EQ(withVisibleCharacters("\u2028\u2029"), "‹U+2028›‹U+2029›");
  EXPECT_EQ(withVisibleCharacters("\u115f\u3164\uffa0\u2800\u034f\u17b4"),
            "‹U+115F›‹U+3164›‹U+FFA0›‹U+2800›‹U+034F›‹U+17B4›");
  EXPECT_EQ(withVisibleCharacters("\U000e0041"), "‹U+E0041›");
  // Toolkits use these for embedded objects and frames.
  EXPECT_EQ(withVisibleCharacters("\ufffc\ufdd0\U0010ffff"), "‹U+FFFC›‹U+FDD0›‹U+10FFFF›");
}

TEST(VisibleText, KeepsWhatCanBeSeen) {
  for (const std::string_view text :
       {"rm -rf ~\n\tgrößer"sv, "日本\u3000語"sv, "👩\u200d❤\ufe0f\u200d👨"sv, "1\ufe0f\u20e3"sv,
        "می\u200cخواهم"sv, "葛\U000e0100"sv, "\u0600"sv, ""sv}) {
    EXPECT_EQ(withVisibleCharacters(text), text);
  }
}

TEST(VisibleText, ShowsJoinersAndSelectorsThatModifyNothing) {
  EXPECT_EQ(withVisibleCharacters("l\u200ds"), "l‹U+200D›s");
  EXPECT_EQ(withVisibleCharacters("l\ufe0fs"), "l‹U+FE0F›s");
  EXPECT_EQ(withVisibleCharacters("\u200d"), "‹U+200D›");
  // Otherwise a long sequence could hide data.
  EXPECT_EQ(withVisibleCharacters("é\u200d\u200d\u200c"), "é\u200d‹U+200D›‹U+200C›");
  EXPECT_EQ(withVisibleCharacters("é\ufe00\ufe01\U000e0100"), "é\ufe00‹U+FE01›‹U+E0100›");
}

TEST(VisibleText, FindsTheOriginalCharactersOfARange) {
  const VisibleText text("ä\u202eb\u200b\u200bc");
  ASSERT_EQ(text.text(), "ä‹U+202E›b‹U+200B›‹U+200B›c");
  const auto originalOf = [&text](std::string_view part) {
    const std::size_t begin = text.text().find(part);
    return text.original(begin, begin + part.size());
  };
  EXPECT_EQ(text.original(0, text.text().size()), "ä\u202eb\u200b\u200bc");
  EXPECT_EQ(originalOf("ä"), "ä");
  EXPECT_EQ(originalOf("‹U+202E›"), "\u202e");
  EXPECT_EQ(originalOf("b"), "b");
  EXPECT_EQ(originalOf("b‹"), "b\u200b");
  EXPECT_EQ(originalOf("›b"), "\u202eb");
  EXPECT_EQ(originalOf("202E"), "\u202e");
  EXPECT_EQ(originalOf("›‹"), "\u200b\u200b");
  EXPECT_EQ(originalOf("c"), "c");
  EXPECT_EQ(text.original(3, 3), "");
}

TEST(VisibleText, IsTheTextItselfIfEverythingIsVisible) {
  const VisibleText text("ls ~");
  EXPECT_EQ(text.text(), "ls ~");
  EXPECT_EQ(text.original(1, 3), "s ");
  EXPECT_EQ(VisibleText().original(0, 0), "");
}

}  // namespace
}  // namespace quillmar::text
