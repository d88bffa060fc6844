#include "platform/widgets/type_ahead.h"

#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "tests/key_presses.h"

namespace quillmar {
namespace {

class TypeAheadTest : public testing::Test {
 protected:
  void type(const std::string& character) {
    current = search.find(
        character, titles.size(), current, [this](std::size_t i) { return titles[i]; }, now);
  }

  const std::vector<std::string> titles{"Sleep", "Öffnen", "Restart", "Say it", "say more"};
  TypeAhead search;
  TypeAhead::Clock::time_point now{};
  std::optional<std::size_t> current;
};

TEST_F(TypeAheadTest, TheTypedCharactersAreTheBeginningOfATitleInAnyCase) {
  type("r");
  EXPECT_EQ(current, 2U);
  now += TypeAhead::pause;
  type("ö");
  EXPECT_EQ(current, 1U);
  now += TypeAhead::pause;
  for (const char* const character : {"S", "A", "Y", " ", "m"}) type(character);
  EXPECT_EQ(current, 4U);
}

TEST_F(TypeAheadTest, ASearchThatFindsNothingHasNoResult) {
  type("x");
  EXPECT_EQ(current, std::nullopt);
}

TEST_F(TypeAheadTest, ACharacterTypedAgainGoesThroughTheTitlesThatBeginWithIt) {
  std::vector<std::size_t> found;
  for (int i = 0; i < 4; ++i) {
    type("s");
    found.push_back(current.value_or(99));
  }
  EXPECT_EQ(found, (std::vector<std::size_t>{0, 3, 4, 0}));
}

TEST_F(TypeAheadTest, APauseStartsANewSearch) {
  type("s");
  now += TypeAhead::pause;
  type("r");
  EXPECT_EQ(current, 2U);
}

TEST_F(TypeAheadTest, SpaceContinuesASearchButStartsNone) {
  EXPECT_FALSE(search.isSearched(pressOf(keys::space), now));
  type("s");
  EXPECT_TRUE(search.isSearched(pressOf(keys::space), now));
  now += TypeAhead::pause;
  EXPECT_FALSE(search.isSearched(pressOf(keys::space), now));
}

TEST_F(TypeAheadTest, KeysWithoutATypedCharacterAreNotSearched) {
  EXPECT_TRUE(search.isSearched(pressOf({.character = "ß", .modifierMask = 0}), now));
  EXPECT_TRUE(
      search.isSearched(pressOf({.character = "a", .modifierMask = modifiers::shift}), now));
  EXPECT_FALSE(
      search.isSearched(pressOf({.character = "a", .modifierMask = modifiers::control}), now));
  for (const KeyEquivalent& key : {keys::returnKey, keys::escape, keys::tab, keys::down}) {
    EXPECT_FALSE(search.isSearched(pressOf(key), now));
  }
  EXPECT_FALSE(search.isSearched(KeyPress{}, now));
}

}  // namespace
}  // namespace quillmar
