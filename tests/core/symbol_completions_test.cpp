#include "settings_ui/symbol_completions.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_images.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class SymbolCompletionsTest : public testing::Test {
 protected:
  std::vector<std::string> complete(const std::string& typed) {
    std::vector<std::string> names;
    for (const TextCompletion& completion : symbolCompletions(images, typed)) {
      names.push_back(completion.text);
    }
    return names;
  }

  MemoryImages images;
};

TEST_F(SymbolCompletionsTest, NamesThatBeginWithTheTextComeBeforeThoseThatContainIt) {
  images.symbols = {"badge.folder", "doc", "folder", "folder.badge.plus", "subfolder"};
  EXPECT_THAT(complete("fold"),
              ElementsAre("folder", "folder.badge.plus", "badge.folder", "subfolder"));
}

TEST_F(SymbolCompletionsTest, EachHasItsImage) {
  images.symbols = {"folder"};
  EXPECT_THAT(symbolCompletions(images, "f"),
              ElementsAre(TextCompletion{.text = "folder", .image = images.symbol("folder")}));
}

TEST_F(SymbolCompletionsTest, CaseAndOuterWhiteSpaceDoNotMatter) {
  images.symbols = {"Folder", "star"};
  EXPECT_THAT(complete(" fOLD\t"), ElementsAre("Folder"));
}

TEST_F(SymbolCompletionsTest, AnEmptyTextHasNone) {
  EXPECT_THAT(complete(""), IsEmpty());
  EXPECT_THAT(complete(" \t"), IsEmpty());
}

TEST_F(SymbolCompletionsTest, ATextWithoutMatchHasNone) {
  EXPECT_THAT(complete("no.such"), IsEmpty());
}

TEST_F(SymbolCompletionsTest, ACompleteNameIsOfferedOnlyBesideOthers) {
  images.symbols = {"folder", "star", "star.fill"};
  EXPECT_THAT(complete("folder"), IsEmpty());
  EXPECT_THAT(complete(" folder "), IsEmpty());
  EXPECT_THAT(complete("FOLDER"), ElementsAre("folder"));
  EXPECT_THAT(complete("star"), ElementsAre("star", "star.fill"));
}

TEST_F(SymbolCompletionsTest, ThereAreFiftyAtMost) {
  images.symbols.clear();
  for (int i = 100; i < 200; ++i) images.symbols.insert("a" + std::to_string(i));
  images.symbols.insert("199");
  const std::vector<std::string> names = complete("1");
  ASSERT_EQ(names.size(), 50U);
  EXPECT_EQ(names.front(), "199");
  EXPECT_EQ(names.back(), "a148");
}

}  // namespace
}  // namespace quillmar
