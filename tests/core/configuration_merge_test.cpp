#include <cstdint>
#include <limits>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "config/document_decoder.h"
#include "config/quillmar_config.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::int64_t largestOrder = std::numeric_limits<std::int64_t>::max();

MenuItem item(std::string id, std::string title = "") {
  MenuItem result;
  result.id = std::move(id);
  result.title = std::move(title);
  return result;
}

MenuItem separatorItem(std::string id) {
  MenuItem result = MenuItem::separator();
  result.id = std::move(id);
  return result;
}

MenuCategory folder(std::string id, std::int64_t sortOrder, std::vector<MenuItem> items = {}) {
  MenuCategory result;
  result.id = std::move(id);
  result.name = "Folder " + result.id;
  result.sortOrder = sortOrder;
  result.items = std::move(items);
  return result;
}

MenuCategory separatorFolder(std::string id, std::int64_t sortOrder) {
  MenuCategory result;
  result.id = std::move(id);
  result.sortOrder = sortOrder;
  result.isSeparator = true;
  return result;
}

QuillmarConfig document(std::vector<MenuCategory> folders) {
  QuillmarConfig result;
  result.categories = std::move(folders);
  return result;
}

std::vector<std::string> itemIds(const MenuCategory& category) {
  std::vector<std::string> ids;
  for (const MenuItem& entry : category.items) ids.push_back(entry.id);
  return ids;
}

std::vector<std::pair<std::string, std::int64_t>> orders(const QuillmarConfig& config) {
  std::vector<std::pair<std::string, std::int64_t>> result;
  for (const MenuCategory& category : config.categories) {
    result.emplace_back(category.id, category.sortOrder);
  }
  return result;
}

using Order = std::pair<std::string, std::int64_t>;

/// The user's document: a version, names and preferences that differ from every default.
QuillmarConfig current() {
  QuillmarConfig config = document({
      folder("tools", 4, {item("a", "Mine"), separatorItem("line"), item("b")}),
      separatorFolder("rule", 2),
      folder("web", 7, {item("c")}),
  });
  config.version = 5;
  config.name = "My menu";
  config.description = "What I use";
  config.preferences = {
      .flattenSingleFolder = true, .notifyOnFailure = false, .useLoginShell = false};
  return config;
}

TEST(ConfigurationMerge, OfADocumentIntoItselfChangesTheVersionOnly) {
  const QuillmarConfig config = current();
  QuillmarConfig expected = config;
  expected.version = 2;
  EXPECT_EQ(config.merging(config), expected);
  EXPECT_EQ(config.mergePreview(config), (MergePreview{0, 0}));
}

TEST(ConfigurationMerge, IntoAnEmptyDocumentAddsEveryFolderInThePacksOrder) {
  QuillmarConfig pack = document({folder("third", 90, {item("3")}), folder("first", -5),
                                  separatorFolder("second", 12), folder("fourth", 91)});
  pack.version = 1;
  pack.name = "A pack";
  pack.description = "From afar";
  pack.preferences.flattenSingleFolder = true;

  const QuillmarConfig merged = QuillmarConfig().merging(pack);
  EXPECT_THAT(orders(merged), ElementsAre(Order{"first", 0}, Order{"second", 1}, Order{"third", 2},
                                          Order{"fourth", 3}));
  EXPECT_EQ(merged.version, 2);
  EXPECT_FALSE(merged.name);
  EXPECT_FALSE(merged.description);
  EXPECT_EQ(merged.preferences, Preferences());
  EXPECT_EQ(QuillmarConfig().mergePreview(pack), (MergePreview{3, 1}));
}

TEST(ConfigurationMerge, KeepsTheDocumentsOwnNameDescriptionAndPreferences) {
  QuillmarConfig pack = document({folder("new", 0)});
  pack.version = 9;
  pack.name = "A pack";
  pack.description = "From afar";

  const QuillmarConfig merged = current().merging(pack);
  EXPECT_EQ(merged.version, 2);
  EXPECT_EQ(merged.name, "My menu");
  EXPECT_EQ(merged.description, "What I use");
  EXPECT_EQ(merged.preferences, current().preferences);
}

TEST(ConfigurationMerge, AppendsTheNewItemsOfAKnownFolderAndLeavesTheRestAlone) {
  MenuCategory theirs =
      folder("tools", 0, {item("new"), item("a", "Theirs"), separatorItem("new line")});
  theirs.name = "Another name";
  theirs.iconSymbolName = "bolt";
  theirs.showAtTopLevel = true;
  const QuillmarConfig pack = document({theirs});

  QuillmarConfig expected = current();
  expected.version = 2;
  expected.categories[0].items.push_back(item("new"));
  expected.categories[0].items.push_back(separatorItem("new line"));
  EXPECT_EQ(current().merging(pack), expected);
  EXPECT_EQ(current().mergePreview(pack), (MergePreview{0, 1}));
}

TEST(ConfigurationMerge, OfAPackWithoutIdsAddsItAgainWithEveryLoad) {
  const std::string json = R"({"categories": [{"name": "Tools", "items": [{"title": "One"}]}]})";
  QuillmarConfig config;
  for (std::size_t loads = 1; loads <= 3; ++loads) {
    const QuillmarConfig pack = decodeDocument(json).value();
    EXPECT_EQ(config.mergePreview(pack), (MergePreview{1, 1}));
    config = config.merging(pack);
    EXPECT_THAT(config.categories, SizeIs(loads));
  }
}

TEST(ConfigurationMerge, AddsSeparatorsThatThePreviewDoesNotCount) {
  const QuillmarConfig pack =
      document({separatorFolder("new rule", 0),
                folder("new", 1, {item("x"), separatorItem("new line"), item("y")})});
  EXPECT_EQ(current().mergePreview(pack), (MergePreview{1, 2}));

  const QuillmarConfig merged = current().merging(pack);
  ASSERT_THAT(merged.categories, SizeIs(5));
  EXPECT_TRUE(merged.categories[3].isSeparator);
  EXPECT_THAT(itemIds(merged.categories[4]), ElementsAre("x", "new line", "y"));
  EXPECT_EQ(merged.categories[4].items, pack.categories[1].items);
}

TEST(ConfigurationMerge, OfTwoNewFoldersWithOneIdLetsTheSecondContributeToTheFirst) {
  const QuillmarConfig pack = document({folder("new", 1, {item("x", "Second"), item("z")}),
                                        folder("new", 0, {item("x", "First"), item("y")})});
  const QuillmarConfig merged = current().merging(pack);
  ASSERT_THAT(merged.categories, SizeIs(4));
  EXPECT_THAT(itemIds(merged.categories[3]), ElementsAre("x", "y", "z"));
  EXPECT_EQ(merged.categories[3].items[0].title, "First");
  // The preview looks at the current folders alone.
  EXPECT_EQ(current().mergePreview(pack), (MergePreview{2, 4}));
}

TEST(ConfigurationMerge, PutsNewFoldersBehindTheLargestSortOrderSeparatorsIncluded) {
  const QuillmarConfig config =
      document({separatorFolder("rule", 20), folder("low", -3), folder("high", 9)});
  const QuillmarConfig merged =
      config.merging(document({folder("new", -100), folder("high", 50), folder("newer", -99)}));
  EXPECT_THAT(orders(merged), ElementsAre(Order{"rule", 20}, Order{"low", -3}, Order{"high", 9},
                                          Order{"new", 21}, Order{"newer", 22}));
}

TEST(ConfigurationMerge, CountsOnFromNegativeSortOrders) {
  const QuillmarConfig merged = document({folder("low", -8)}).merging(document({folder("n", 3)}));
  EXPECT_THAT(orders(merged), ElementsAre(Order{"low", -8}, Order{"n", -7}));
}

TEST(ConfigurationMerge, KeepsThePacksArrayOrderAmongEqualSortOrders) {
  std::vector<MenuCategory> folders;
  std::vector<Order> expected;
  for (int i = 0; i < 100; ++i) {
    folders.push_back(folder(std::to_string(100 - i), 3));
    expected.emplace_back(std::to_string(100 - i), i);
  }
  EXPECT_EQ(orders(QuillmarConfig().merging(document(folders))), expected);
}

TEST(ConfigurationMerge, AddsAFolderOfAKnownNameWithAnotherIdAsASecondOne) {
  MenuCategory sameName = folder("other", 0);
  sameName.name = current().categories[0].name;
  EXPECT_THAT(current().merging(document({sameName})).categories, SizeIs(4));
  EXPECT_EQ(current().mergePreview(document({sameName})), (MergePreview{1, 0}));
}

TEST(ConfigurationMerge, ComparesIdsExactly) {
  const QuillmarConfig pack = document({folder("Tools", 0), folder("tools ", 1)});
  EXPECT_THAT(current().merging(pack).categories, SizeIs(5));
}

TEST(ConfigurationMerge, AddsAnItemWhoseIdIsKnownInAnotherFolderOnly) {
  const QuillmarConfig pack = document({folder("web", 0, {item("a", "Theirs")})});
  EXPECT_THAT(itemIds(current().merging(pack).categories[2]), ElementsAre("c", "a"));
  EXPECT_EQ(current().mergePreview(pack), (MergePreview{0, 1}));
}

TEST(ConfigurationMerge, AddsEveryOneOfAPackFoldersItemsThatShareANewId) {
  const QuillmarConfig pack =
      document({folder("web", 0, {item("x", "One"), item("c"), item("x", "Two")})});
  const QuillmarConfig merged = current().merging(pack);
  ASSERT_THAT(itemIds(merged.categories[2]), ElementsAre("c", "x", "x"));
  EXPECT_EQ(merged.categories[2].items[2].title, "Two");
  EXPECT_EQ(current().mergePreview(pack), (MergePreview{0, 2}));
}

TEST(ConfigurationMerge, KnowsWhatAnEarlierPackFolderAppended) {
  const QuillmarConfig pack = document({folder("web", 0, {item("x"), item("x")}),
                                        folder("web", 1, {item("x"), item("c"), item("y")}),
                                        folder("web", 2, {item("y"), item("z")})});
  EXPECT_THAT(itemIds(current().merging(pack).categories[2]), ElementsAre("c", "x", "x", "y", "z"));
  // In the preview nothing is added as the count goes on.
  EXPECT_EQ(current().mergePreview(pack), (MergePreview{0, 6}));
}

TEST(ConfigurationMerge, AddsToTheFirstOfSeveralCurrentFoldersWithOneId) {
  const QuillmarConfig config =
      document({folder("twice", 8, {item("a")}), folder("twice", 1, {item("b")})});
  const QuillmarConfig pack = document({folder("twice", 0, {item("a"), item("b")})});
  const QuillmarConfig merged = config.merging(pack);
  ASSERT_THAT(merged.categories, SizeIs(2));
  EXPECT_THAT(itemIds(merged.categories[0]), ElementsAre("a", "b"));
  EXPECT_EQ(merged.categories[1], config.categories[1]);
  EXPECT_EQ(config.mergePreview(pack), (MergePreview{0, 1}));
}

TEST(ConfigurationMerge, TreatsAnEmptyIdLikeAnyOther) {
  const QuillmarConfig config = document({folder("", 0, {item("")})});
  const QuillmarConfig pack = document({folder("", 0, {item(""), item("x")})});
  const QuillmarConfig merged = config.merging(pack);
  ASSERT_THAT(merged.categories, SizeIs(1));
  EXPECT_THAT(itemIds(merged.categories[0]), ElementsAre("", "x"));
  EXPECT_EQ(QuillmarConfig().mergePreview(pack), (MergePreview{1, 2}));
}

TEST(ConfigurationMerge, MatchesSeparatorFoldersById) {
  MenuCategory rule = separatorFolder("rule", 0);
  EXPECT_THAT(current().merging(document({rule})).categories, SizeIs(3));

  // What the pack calls a separator may be a folder here: its items count like any.
  MenuCategory tools = separatorFolder("tools", 0);
  tools.items = {item("new")};
  EXPECT_THAT(itemIds(current().merging(document({tools})).categories[0]),
              ElementsAre("a", "line", "b", "new"));
  EXPECT_EQ(current().mergePreview(document({tools})), (MergePreview{0, 1}));

  // A new separator counts for nothing, whatever it holds.
  rule = separatorFolder("unknown", 0);
  rule.items = {item("new")};
  EXPECT_EQ(current().mergePreview(document({rule})), (MergePreview{0, 0}));
}

TEST(ConfigurationMerge, CountsNewItemsOfAKnownSeparatorFolder) {
  QuillmarConfig user = document({folder("rule", 0, {})});
  user.categories[0].isSeparator = true;
  MenuCategory rule = folder("rule", 0, {item("new")});
  rule.isSeparator = true;
  EXPECT_EQ(user.mergePreview(document({rule})), (MergePreview{0, 1}));
}

TEST(ConfigurationMerge, AddsANewFoldersItemsUnchangedDuplicatesIncluded) {
  MenuCategory theirs = folder("new", 3, {item("x"), item("x"), separatorItem("s"), item("a")});
  theirs.iconSymbolName = "bolt";
  theirs.showAtTopLevel = true;
  theirs.items[0].shortcut = KeyboardShortcut{.keyCode = 4, .character = "h", .modifiers = 0x80000};
  const QuillmarConfig merged = current().merging(document({theirs}));
  theirs.sortOrder = 8;
  EXPECT_EQ(merged.categories[3], theirs);
}

TEST(ConfigurationMerge, OfAnEmptyPackAddsNothing) {
  EXPECT_EQ(current().merging(QuillmarConfig()).categories, current().categories);
  EXPECT_EQ(current().mergePreview(QuillmarConfig()), (MergePreview{0, 0}));
  EXPECT_THAT(QuillmarConfig().merging(QuillmarConfig()).categories, IsEmpty());
}

TEST(ConfigurationMerge, MakesWhatTheFirstPreviewPromisedAndNothingTheSecondTime) {
  const QuillmarConfig pack = document(
      {folder("new", 0, {item("x"), item("y")}), folder("tools", 1, {item("a"), item("z")})});
  const QuillmarConfig once = current().merging(pack);
  EXPECT_EQ(current().mergePreview(pack), (MergePreview{1, 3}));
  EXPECT_EQ(once.mergePreview(pack), (MergePreview{0, 0}));
  EXPECT_EQ(once.merging(pack), once);
}

TEST(ConfigurationMergeDeathTest, StopsWhenNoSortOrderIsLeft) {
  const QuillmarConfig full = document({folder("last", largestOrder)});
  EXPECT_DEATH(std::ignore = full.merging(document({folder("new", 0)})), "too large to add to");
  EXPECT_DEATH(std::ignore = full.merging(QuillmarConfig()), "too large to add to");
  const QuillmarConfig almostFull = document({folder("last", largestOrder - 1)});
  EXPECT_DEATH(std::ignore = almostFull.merging(document({folder("new", 0)})),
               "too large to add to");
  EXPECT_EQ(almostFull.merging(document({folder("last", 0, {item("x")})})).categories[0].items,
            std::vector<MenuItem>{item("x")});
}

TEST(ConfigurationReplacement, TakesThePacksVersionAndFoldersAndKeepsThePreferences) {
  QuillmarConfig pack = document({folder("tools", 90, {item("q")}), separatorFolder("s", -4),
                                  folder("tools", 90, {item("q")})});
  pack.version = 1;
  pack.name = "A pack";
  pack.description = "From afar";

  const QuillmarConfig replaced = current().replacingFolders(pack);
  EXPECT_EQ(replaced.version, 1);
  EXPECT_FALSE(replaced.name);
  EXPECT_FALSE(replaced.description);
  EXPECT_EQ(replaced.categories, pack.categories);
  EXPECT_EQ(replaced.preferences, current().preferences);
}

TEST(ConfigurationReplacement, ByAnEmptyPackLeavesThePreferencesAlone) {
  const QuillmarConfig replaced = current().replacingFolders(QuillmarConfig());
  EXPECT_THAT(replaced.categories, IsEmpty());
  EXPECT_EQ(replaced.preferences, current().preferences);
}

}  // namespace
}  // namespace quillmar
