#include "platform/linux/status_item/dbus_menu_tree.h"

#include <limits>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmar {
namespace {

using Id = DbusMenuTree::Id;

Menu menuOf(const std::vector<std::string>& titles) {
  Menu menu;
  for (const std::string& title : titles) {
    ActionEntry entry;
    entry.title = title;
    menu.entries.emplace_back(entry);
  }
  return menu;
}

std::string titleAt(const DbusMenuTree& tree, Id id) {
  const auto node = tree.find(id);
  if (!node || !node->entry) return "none";
  if (const auto* folder = std::get_if<SubmenuEntry>(node->entry)) return folder->title;
  const auto* action = std::get_if<ActionEntry>(node->entry);
  return action ? action->title : "separator";
}

TEST(DbusMenuTree, StartsAsAnEmptyRoot) {
  const DbusMenuTree tree;
  const auto root = tree.find(DbusMenuTree::rootId);
  ASSERT_TRUE(root);
  EXPECT_EQ(root->childCount, 0);
  EXPECT_FALSE(tree.find(1));
}

TEST(DbusMenuTree, NumbersSiblingsOneAfterAnother) {
  SubmenuEntry folder;
  folder.title = "Folder";
  folder.submenu = menuOf({"Inner 1", "Inner 2"});
  Menu menu = menuOf({"Top"});
  menu.entries.emplace_back(folder);
  menu.entries.emplace_back(SeparatorEntry{});
  DbusMenuTree tree;
  tree.replace(menu);

  const auto root = tree.find(DbusMenuTree::rootId);
  ASSERT_EQ(root->childCount, 3);
  EXPECT_EQ(titleAt(tree, root->firstChild), "Top");
  EXPECT_EQ(titleAt(tree, root->firstChild + 1), "Folder");
  EXPECT_EQ(titleAt(tree, root->firstChild + 2), "separator");
  const auto inner = tree.find(root->firstChild + 1);
  ASSERT_EQ(inner->childCount, 2);
  EXPECT_EQ(titleAt(tree, inner->firstChild), "Inner 1");
  EXPECT_EQ(titleAt(tree, inner->firstChild + 1), "Inner 2");
  EXPECT_EQ(tree.nodes().size(), 5u);
}

TEST(DbusMenuTree, NeverGivesAnIdTwice) {
  DbusMenuTree tree;
  Id lastBefore = 0;
  for (int generation = 0; generation < 5; ++generation) {
    tree.replace(menuOf({"One", "Two " + std::to_string(generation)}));
    EXPECT_GT(tree.nodes().front().id, lastBefore);
    lastBefore = tree.nodes().back().id;
  }
}

TEST(DbusMenuTree, KeepsTheGenerationBeforeAndNoOther) {
  DbusMenuTree tree;
  tree.replace(menuOf({"First"}));
  const Id first = tree.nodes().front().id;
  tree.replace(menuOf({"Second"}));
  EXPECT_EQ(titleAt(tree, first), "First");
  EXPECT_EQ(titleAt(tree, tree.nodes().front().id), "Second");
  tree.replace(menuOf({"Third"}));
  EXPECT_FALSE(tree.find(first));
}

TEST(DbusMenuTree, RevisionsGrow) {
  DbusMenuTree tree;
  const std::uint32_t before = tree.revision();
  tree.replace(menuOf({"One"}));
  EXPECT_EQ(tree.revision(), before + 1);
}

TEST(DbusMenuTree, AnEqualMenuIsNoGeneration) {
  DbusMenuTree tree;
  EXPECT_TRUE(tree.replace(menuOf({"Old"})));
  const Id old = tree.nodes().front().id;
  EXPECT_TRUE(tree.replace(menuOf({"One", "Two"})));
  const std::uint32_t revision = tree.revision();
  const Id id = tree.nodes().back().id;
  EXPECT_FALSE(tree.replace(menuOf({"One", "Two"})));
  EXPECT_EQ(tree.revision(), revision);
  EXPECT_EQ(tree.nodes().back().id, id);
  EXPECT_EQ(titleAt(tree, id), "Two");
  EXPECT_EQ(titleAt(tree, old), "Old");
}

TEST(DbusMenuTree, OfTooManyEntriesThoseOfTheTopLevelAreKept) {
  SubmenuEntry folder;
  folder.title = "Folder";
  folder.submenu = menuOf(std::vector<std::string>(DbusMenuTree::maximumEntries, "Inner"));
  Menu menu;
  menu.entries = {folder, folder};
  menu.entries.emplace_back(menuOf({"Quit"}).entries.front());
  DbusMenuTree tree;
  tree.replace(menu);
  EXPECT_EQ(tree.nodes().size(), DbusMenuTree::maximumEntries);
  const auto root = tree.find(DbusMenuTree::rootId);
  ASSERT_EQ(root->childCount, 3);
  EXPECT_EQ(titleAt(tree, root->firstChild + 2), "Quit");
  const auto first = tree.find(root->firstChild);
  EXPECT_EQ(first->childCount, static_cast<Id>(DbusMenuTree::maximumEntries - 3));
  EXPECT_EQ(titleAt(tree, first->firstChild + first->childCount - 1), "Inner");
  EXPECT_EQ(tree.find(root->firstChild + 1)->childCount, 0);
}

TEST(DbusMenuTree, AMenuThatIsTooLongKeepsItsLastEntries) {
  std::vector<std::string> titles(DbusMenuTree::maximumEntries, "Item");
  titles.front() = "First";
  titles.emplace_back("About");
  titles.emplace_back("Quit");
  DbusMenuTree tree;
  tree.replace(menuOf(titles));
  ASSERT_EQ(tree.nodes().size(), DbusMenuTree::maximumEntries);
  EXPECT_EQ(titleAt(tree, tree.nodes().front().id), "First");
  EXPECT_EQ(titleAt(tree, tree.nodes().end()[-3].id), "Item");
  EXPECT_EQ(titleAt(tree, tree.nodes().end()[-2].id), "About");
  EXPECT_EQ(titleAt(tree, tree.nodes().back().id), "Quit");
}

TEST(DbusMenuTree, StartsOverWhenIdsRunOut) {
  constexpr Id nearlyLast = std::numeric_limits<Id>::max() - 2;
  DbusMenuTree tree(nearlyLast);
  tree.replace(menuOf({"One", "Two"}));
  EXPECT_EQ(tree.nodes().front().id, nearlyLast);
  tree.replace(menuOf({"Three"}));
  EXPECT_EQ(tree.nodes().front().id, 1);
  EXPECT_EQ(titleAt(tree, nearlyLast + 1), "Two");
}

TEST(DbusMenuTree, FindsNothingUnderNegativeIds) {
  DbusMenuTree tree;
  tree.replace(menuOf({"One"}));
  EXPECT_FALSE(tree.find(-1));
  EXPECT_FALSE(tree.find(std::numeric_limits<Id>::min()));
  EXPECT_FALSE(tree.find(std::numeric_limits<Id>::max()));
}

}  // namespace
}  // namespace quillmar
