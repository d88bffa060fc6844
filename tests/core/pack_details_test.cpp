#include "import/pack_details.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/key_equivalent.h"
#include "tests/core/settings_window_fixture.h"

namespace quillmar {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

QuillmarConfig packWith(std::vector<MenuCategory> folders) {
  QuillmarConfig pack;
  pack.categories = std::move(folders);
  return pack;
}

std::string detailsOf(const MenuItem& item) {
  return packDetails({}, packWith({folderWith("F", 0, {item})}));
}

TEST(PackDetails, ListEveryFolderAndItemInTheOrderOfTheMenu) {
  MenuCategory first = folderWith("A", 0, {itemWith("1", "One"), separatorItem("s")});
  first.iconSymbolName = "star";
  first.showAtTopLevel = true;
  EXPECT_EQ(packDetails({}, packWith({folderWith("B", 2), separatorFolder("S", 1), first})),
            "Folder 1 of 3: Folder A\n"
            "    Icon: star\n"
            "    Shown at the top level of the menu\n"
            "\n"
            "Item 1 of 2: One\n"
            "    Shell Command:\n"
            "    │ echo One\n"
            "    Runs without asking\n"
            "    Runs in the background\n"
            "\n"
            "Separator (2 of 2)\n"
            "\n"
            "Separator between folders (2 of 3)\n"
            "\n"
            "Folder 3 of 3: Folder B\n");
}

TEST(PackDetails, ShowEveryFieldOfAnItem) {
  MenuItem item = itemWith("1", "Deploy");
  item.isEnabled = false;
  item.confirmBeforeRunning = true;
  item.iconSymbolName = "bolt";
  item.inputPrompt = "Which host?";
  item.shortcut = KeyboardShortcut{
      .keyCode = 40, .character = "k", .modifiers = modifiers::command | modifiers::shift};
  item.command = {.type = CommandType::scriptFile,
                  .value = "/home/user/deploy.sh",
                  .runInBackground = false,
                  .showNotification = true,
                  .copyToClipboard = true};
  EXPECT_EQ(detailsOf(item),
            "Folder 1 of 1: Folder F\n"
            "\n"
            "Item 1 of 1: Deploy\n"
            "    Disabled\n"
            "    Script File:\n"
            "    │ /home/user/deploy.sh\n"
            "    Icon: bolt\n"
            "    Shortcut: ⇧⌘K (key code 40), in all programs\n"
            "    Asks for a value: Which host?\n"
            "    Asks before it runs\n"
            "    Blocks the menu while it runs\n"
            "    Copies its output to the clipboard\n"
            "    Shows its output in a notification\n");
}

TEST(PackDetails, ShowAShortcutOfTheMenuAndATerminal) {
  MenuItem item = itemWith("1", "Top");
  item.shortcut = KeyboardShortcut{.keyCode = 0, .character = "a", .isGlobal = false};
  item.command.openInTerminal = true;
  EXPECT_THAT(detailsOf(item), HasSubstr("    Shortcut: A (key code 0), in the menu only\n"));
  EXPECT_THAT(detailsOf(item), HasSubstr("    Opens in a terminal\n"));
  item.command.type = CommandType::appleScript;
  EXPECT_THAT(detailsOf(item), Not(HasSubstr("terminal")));
}

TEST(PackDetails, ShowEachLineOfACommand) {
  MenuItem item = itemWith("1", "Script");
  item.command.value = "\ncd /\n\nls\n";
  EXPECT_THAT(detailsOf(item), HasSubstr("    Shell Command:\n"
                                         "    │ \n"
                                         "    │ cd /\n"
                                         "    │ \n"
                                         "    │ ls\n"
                                         "    │ \n"
                                         "    Runs without asking\n"));
}

TEST(PackDetails, ShowALongCommandInFullWithItsHiddenCharacters) {
  MenuItem item = itemWith("1", "Script");
  item.command.value = std::string(10'000, ' ') + "rm\u202E" + std::string(100'000, 'x') + "end";
  EXPECT_THAT(detailsOf(item), HasSubstr("    │ " + item.command.value + "\n"));
}

TEST(PackDetails, ShowTheCommandOfASeparatorThatHasOne) {
  MenuItem item = separatorItem("s");
  item.command.value = "rm -rf /";
  EXPECT_THAT(detailsOf(item),
              HasSubstr("Separator (1 of 1)\n    Shell Command:\n    │ rm -rf /\n"));
}

TEST(PackDetails, NoTextCanImitateALineOfAnotherKind) {
  MenuItem item = itemWith("1", "A\nItem 2 of 2: B\u202E");
  item.command.value = "ls\nItem 2 of 2: B\n    Shell Command:";
  item.iconSymbolName = "a\nItem 2 of 2: B";
  item.inputPrompt = "a\n\nItem 2 of 2: B";
  item.shortcut = KeyboardShortcut{.keyCode = 0, .character = "k\nItem 2 of 2: B"};
  MenuCategory folder = folderWith("F", 0, {item});
  folder.name = "F\n\nItem 2 of 2: B";
  const std::string details = packDetails({}, packWith({folder}));
  EXPECT_THAT(details, Not(HasSubstr("\nItem 2")));
  EXPECT_THAT(details, HasSubstr("Item 1 of 1: A Item 2 of 2: B‹U+202E›\n"));
}

TEST(PackDetails, BeginWithTheWholeNameAndDescriptionOfThePack) {
  QuillmarConfig pack = packWith({folderWith("F", 0)});
  pack.name = std::string(200, 'n') + "\n\u202E";
  EXPECT_EQ(packDetails({}, pack),
            "Pack: " + std::string(200, 'n') + " ‹U+202E›\n\nFolder 1 of 1: Folder F\n");
  pack.description = "First line.\n\n" + std::string(1'000, 'd') + "\u202E";
  EXPECT_EQ(packDetails({}, pack), "Pack: " + std::string(200, 'n') +
                                       " ‹U+202E›\n"
                                       "    Description:\n"
                                       "    │ First line.\n"
                                       "    │ \n"
                                       "    │ " +
                                       std::string(1'000, 'd') +
                                       "\u202E\n"
                                       "\n"
                                       "Folder 1 of 1: Folder F\n");
  pack.name.reset();
  pack.description = "About it";
  EXPECT_THAT(packDetails({}, pack),
              StartsWith("Pack without a name\n    Description:\n    │ About it\n\nFolder 1"));
}

TEST(PackDetails, TellTheFolderThatAMergeAddsTheItemsTo) {
  MenuCategory hiding = separatorFolder("N", 1);
  hiding.items = {itemWith("b", "Hidden")};
  const QuillmarConfig pack = packWith({folderWith("N", 0, {itemWith("a", "Date")}), hiding});
  EXPECT_THAT(packDetails({}, pack),
              HasSubstr("Separator between folders (2 of 2)\n"
                        "    Merge adds its new items to the folder “Folder N”\n"
                        "\n"
                        "Item 1 of 1: Hidden\n"));
  MenuCategory mine = folderWith("N", 0, {itemWith("a", "Date")});
  mine.name = "My\nfolder";
  const std::string details = packDetails(packWith({mine}), pack);
  EXPECT_THAT(details, HasSubstr("Folder 1 of 2: Folder N\n\nItem"));
  EXPECT_THAT(details, HasSubstr("Separator between folders (2 of 2)\n"
                                 "    Merge adds its new items to the folder “My folder”\n"));
  EXPECT_THAT(packDetails(packWith({separatorFolder("N", 0)}), pack),
              HasSubstr("Folder 1 of 2: Folder N\n"
                        "    Merge adds its new items to a separator, where they are not shown\n"));
}

TEST(PackDetails, AnEmptyPackHasNone) {
  EXPECT_EQ(packDetails({}, {}), "");
}

}  // namespace
}  // namespace quillmar
