#include "app/status_menu_builder.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_images.h"
#include "tests/core/menu_outline.h"

namespace quillmar {
namespace {

using testing::ElementsAre;

MenuItem item(const std::string& title) {
  MenuItem item;
  item.id = "id of " + title;
  item.title = title;
  return item;
}

MenuItem disabled(const std::string& title) {
  MenuItem menuItem = item(title);
  menuItem.isEnabled = false;
  return menuItem;
}

MenuCategory folder(const std::string& name, std::vector<MenuItem> items) {
  MenuCategory category;
  category.id = "id of " + name;
  category.name = name;
  category.items = std::move(items);
  return category;
}

MenuCategory topLevel(const std::string& name, std::vector<MenuItem> items) {
  MenuCategory category = folder(name, std::move(items));
  category.showAtTopLevel = true;
  return category;
}

MenuCategory separatorFolder() {
  MenuCategory category;
  category.isSeparator = true;
  return category;
}

/// The document with these folders in this order.
QuillmarConfig documentOf(std::vector<MenuCategory> categories) {
  QuillmarConfig config;
  for (MenuCategory& category : categories) {
    category.sortOrder = static_cast<std::int64_t>(config.categories.size());
    config.categories.push_back(std::move(category));
  }
  return config;
}

class StatusMenuBuilderTest : public testing::Test {
 protected:
  Menu build(const QuillmarConfig& config, bool updatesConfigured = false) {
    return buildStatusMenu(config, images, updatesConfigured);
  }

  /// The lines above the fixed entries.
  std::vector<std::string> linesOf(const QuillmarConfig& config) {
    std::vector<std::string> lines = menuOutline(build(config));
    constexpr std::size_t fixedEntries = 4;
    EXPECT_GE(lines.size(), fixedEntries);
    lines.resize(lines.size() - fixedEntries);
    return lines;
  }

  MemoryImages images;
};

TEST_F(StatusMenuBuilderTest, ADocumentWithoutFoldersYieldsExactlyTheFixedEntries) {
  EXPECT_THAT(menuOutline(build({})),
              ElementsAre("About Quillmar", "Settings...", "---", "Quit Quillmar"));
}

TEST_F(StatusMenuBuilderTest, ConfiguredUpdatesAddTheirEntry) {
  EXPECT_THAT(
      menuOutline(build({}, true)),
      ElementsAre("About Quillmar", "Settings...", "Check for Updates...", "---", "Quit Quillmar"));
}

TEST_F(StatusMenuBuilderTest, TheFixedEntriesHaveTheirActionsAndKeys) {
  const Menu menu = build({}, true);
  const auto entry = [&](std::size_t i) { return std::get<ActionEntry>(menu.entries[i]); };
  EXPECT_EQ(entry(0), (ActionEntry{.title = "About Quillmar", .id = "about"}));
  EXPECT_EQ(entry(1), (ActionEntry{.title = "Settings...",
                                   .id = "settings",
                                   .keyEquivalent = KeyEquivalent{",", modifiers::command}}));
  EXPECT_EQ(entry(2), (ActionEntry{.title = "Check for Updates...", .id = "check-for-updates"}));
  EXPECT_EQ(entry(4), (ActionEntry{.title = "Quit Quillmar",
                                   .id = "quit",
                                   .keyEquivalent = KeyEquivalent{"q", modifiers::command}}));
}

TEST_F(StatusMenuBuilderTest, AFolderBecomesASubmenuTitledWithItsName) {
  const Menu menu = build(documentOf({folder("Tools", {item("One"), item("Two")})}));
  EXPECT_THAT(menuOutline(menu), ElementsAre("Tools >", "  One", "  Two", "---", "About Quillmar",
                                             "Settings...", "---", "Quit Quillmar"));
  const auto& submenu = std::get<SubmenuEntry>(menu.entries[0]);
  EXPECT_EQ(submenu.submenu.title, "Tools");
  EXPECT_EQ(std::get<ActionEntry>(submenu.submenu.entries[1]),
            (ActionEntry{.title = "Two", .id = "run:id of Two"}));
}

TEST_F(StatusMenuBuilderTest, FoldersComeInSortOrderAndItemsInDocumentOrder) {
  QuillmarConfig config =
      documentOf({folder("Z", {item("2"), item("1")}), folder("A", {item("3")})});
  config.categories[0].sortOrder = 5;
  EXPECT_THAT(linesOf(config), ElementsAre("A >", "  3", "Z >", "  2", "  1", "---"));
}

TEST_F(StatusMenuBuilderTest, ASingleFolderIsFlattenedWhenThePreferenceAsksForIt) {
  images.symbols.insert("hammer");
  QuillmarConfig config =
      documentOf({folder("Tools", {item("One"), disabled("Off"), item("Two")})});
  config.categories[0].iconSymbolName = "hammer";
  config.preferences.flattenSingleFolder = true;
  EXPECT_THAT(menuOutline(build(config)), ElementsAre("One", "Two", "---", "About Quillmar",
                                                      "Settings...", "---", "Quit Quillmar"));
}

TEST_F(StatusMenuBuilderTest, SeparatorFoldersDoNotCountForFlattening) {
  QuillmarConfig config = documentOf({folder("Tools", {item("One")}), separatorFolder()});
  config.preferences.flattenSingleFolder = true;
  EXPECT_THAT(linesOf(config), ElementsAre("One", "---"));
}

TEST_F(StatusMenuBuilderTest, HiddenFoldersDoNotCountForFlattening) {
  QuillmarConfig config = documentOf({folder("Tools", {item("One")}), folder("Empty", {})});
  config.preferences.flattenSingleFolder = true;
  EXPECT_THAT(linesOf(config), ElementsAre("One", "---"));
}

TEST_F(StatusMenuBuilderTest, TwoFoldersAreNotFlattened) {
  QuillmarConfig config = documentOf({folder("A", {item("1")}), folder("B", {item("2")})});
  config.preferences.flattenSingleFolder = true;
  EXPECT_THAT(linesOf(config), ElementsAre("A >", "  1", "B >", "  2", "---"));
}

TEST_F(StatusMenuBuilderTest, WithoutThePreferenceASingleFolderStaysAFolder) {
  EXPECT_THAT(linesOf(documentOf({folder("A", {item("1")})})), ElementsAre("A >", "  1", "---"));
}

TEST_F(StatusMenuBuilderTest, ConsecutiveSeparatorFoldersMakeOneLineAndAFirstOneNone) {
  EXPECT_THAT(linesOf(documentOf({separatorFolder(), folder("A", {item("1")}), separatorFolder(),
                                  separatorFolder(), folder("B", {item("2")})})),
              ElementsAre("A >", "  1", "---", "B >", "  2", "---"));
}

TEST_F(StatusMenuBuilderTest, ATopLevelFolderIsFollowedByALineUnlessItIsLast) {
  EXPECT_THAT(linesOf(documentOf({topLevel("A", {item("1")}), folder("B", {item("2")}),
                                  topLevel("C", {item("3")})})),
              ElementsAre("1", "---", "B >", "  2", "3", "---"));
}

TEST_F(StatusMenuBuilderTest, BetweenATopLevelFolderAndASeparatorFolderStandsOneLine) {
  for (const std::vector<MenuItem>& items :
       {std::vector{item("1")}, std::vector{item("1"), MenuItem::separator()}}) {
    EXPECT_THAT(
        linesOf(documentOf({topLevel("A", items), separatorFolder(), folder("B", {item("2")})})),
        ElementsAre("1", "---", "B >", "  2", "---"));
  }
}

TEST_F(StatusMenuBuilderTest, AFolderWithoutAnEnabledItemDisappears) {
  EXPECT_THAT(linesOf(documentOf({folder("Disabled", {disabled("1"), disabled("2")}),
                                  folder("Lines", {MenuItem::separator()}), folder("Empty", {}),
                                  topLevel("Top", {disabled("3")}), folder("A", {item("4")})})),
              ElementsAre("A >", "  4", "---"));
}

TEST_F(StatusMenuBuilderTest, ADisabledItemIsAbsent) {
  EXPECT_THAT(linesOf(documentOf({folder("A", {item("1"), disabled("2"), item("3")})})),
              ElementsAre("A >", "  1", "  3", "---"));
}

TEST_F(StatusMenuBuilderTest, SeparatorItemsAreKeptAsTheyStandUnlessDisabled) {
  MenuItem off = MenuItem::separator();
  off.isEnabled = false;
  const MenuItem line = MenuItem::separator();
  EXPECT_THAT(linesOf(documentOf({folder("A", {line, line, item("1"), off, item("2"), line})})),
              ElementsAre("A >", "  ---", "  ---", "  1", "  2", "  ---", "---"));
}

TEST_F(StatusMenuBuilderTest, ATopLevelFolderThatEndsWithALineGetsASecondOneBeforeTheNextFolder) {
  EXPECT_THAT(linesOf(documentOf(
                  {topLevel("A", {item("1"), MenuItem::separator()}), folder("B", {item("2")})})),
              ElementsAre("1", "---", "---", "B >", "  2", "---"));
}

TEST_F(StatusMenuBuilderTest, ALastTopLevelFolderThatEndsWithALineGetsNoSecondOne) {
  EXPECT_THAT(linesOf(documentOf({topLevel("A", {item("1"), MenuItem::separator()})})),
              ElementsAre("1", "---"));
}

TEST_F(StatusMenuBuilderTest, AShortcutIsGivenToTheMenuAsStored) {
  MenuItem upper = item("Upper");
  upper.shortcut = KeyboardShortcut{.keyCode = 2, .character = "D", .modifiers = 0x180000};
  MenuItem function = item("Function");
  function.shortcut =
      KeyboardShortcut{.keyCode = 96, .character = "\uF708", .modifiers = 0x1, .isGlobal = false};
  const Menu menu = build(documentOf({topLevel("A", {upper, function})}));
  EXPECT_EQ(std::get<ActionEntry>(menu.entries[0]).keyEquivalent, (KeyEquivalent{"D", 0x180000}));
  EXPECT_EQ(std::get<ActionEntry>(menu.entries[1]).keyEquivalent, (KeyEquivalent{"\uF708", 0x1}));
}

TEST_F(StatusMenuBuilderTest, KnownSymbolsAreShownAtPointSize13AndUnknownOnesNot) {
  images.symbols.insert("hammer");
  images.symbols.insert("terminal");
  MenuItem known = item("Known");
  known.iconSymbolName = "terminal";
  MenuItem unknown = item("Unknown");
  unknown.iconSymbolName = "no.such.symbol";
  MenuItem empty = item("Empty");
  empty.iconSymbolName = "";
  MenuCategory tools = folder("Tools", {known, unknown, empty});
  tools.iconSymbolName = "hammer";

  const Menu menu = build(documentOf({tools}));
  const auto& entry = std::get<SubmenuEntry>(menu.entries[0]);
  EXPECT_EQ(entry.image->pointSize, 13);
  EXPECT_EQ(entry.image->weight, FontWeight::regular);
  const auto image = [&](std::size_t i) {
    return std::get<ActionEntry>(entry.submenu.entries[i]).image;
  };
  EXPECT_EQ(image(0)->name, images.symbol("terminal")->name);
  EXPECT_FALSE(image(1));
  EXPECT_FALSE(image(2));
}

}  // namespace
}  // namespace quillmar
