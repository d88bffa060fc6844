#include "import/pack_warnings.h"

#include <cstdint>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/key_equivalent.h"
#include "tests/core/settings_window_fixture.h"

namespace quillmar {
namespace {

using testing::IsEmpty;

QuillmarConfig documentWith(std::vector<MenuCategory> folders) {
  QuillmarConfig document;
  document.categories = std::move(folders);
  return document;
}

/// An item that asks before it runs.
MenuItem itemWithHotKey(const std::string& id, std::uint16_t keyCode,
                        std::uint64_t modifierMask = modifiers::command) {
  MenuItem item = itemWith(id, "Item " + id);
  // A character of its own for each key.
  const std::string character(1, static_cast<char>('k' + keyCode - 40));
  item.shortcut =
      KeyboardShortcut{.keyCode = keyCode, .character = character, .modifiers = modifierMask};
  item.confirmBeforeRunning = true;
  return item;
}

/// The warnings about a pack with these items, for a user without any.
PackWarnings warningsAbout(std::vector<MenuItem> items) {
  return findWarnings({}, documentWith({folderWith("F", 0, std::move(items))}));
}

std::size_t collisions(const QuillmarConfig& current, std::vector<MenuItem> items) {
  return findWarnings(current, documentWith({folderWith("F", 0, std::move(items))}))
      .collidingShortcuts;
}

MenuItem itemWithMenuShortcut(const std::string& id, std::uint16_t keyCode) {
  MenuItem item = itemWithHotKey(id, keyCode);
  item.shortcut->isGlobal = false;
  return item;
}

MenuCategory separatorWith(const std::string& id, std::int64_t sortOrder,
                           std::vector<MenuItem> items) {
  MenuCategory separator = separatorFolder(id, sortOrder);
  separator.items = std::move(items);
  return separator;
}

MenuItem itemRunning(const std::string& command) {
  static int count = 0;
  MenuItem item = itemWith("id" + std::to_string(++count), "One");
  item.command.value = command;
  return item;
}

TEST(PackWarnings, AnOrdinaryPackHasNone) {
  MenuItem script =
      itemRunning("for x in 1 2; do\n\techo \"é 👨‍👩‍👧 שלום $x\"\ndone\n");
  EXPECT_EQ(warningsAbout({script, separatorItem("s"), itemWithHotKey("2", 40)}), PackWarnings{});
  EXPECT_EQ(warningText({}), "");
}

TEST(PackWarnings, CountCommandsWithHiddenCharacters) {
  for (const char* const command : {"ls \u202Egpj.x", "ls\u200B", "ls \U000E0041\U000E0042",
                                    "printf '\x1B[8m'", "ls\rrm", "ls\u2028rm", "ls \u3164"}) {
    EXPECT_EQ(warningsAbout({itemRunning(command), itemRunning("ls")}),
              PackWarnings{.commandsWithHiddenCharacters = 1})
        << command;
  }
}

TEST(PackWarnings, CountCommandsWhoseTextIsPushedOutOfView) {
  for (const std::string gap : {" ", "\n", "\u00A0", "\t", " \n"}) {
    std::string blanks;
    for (int i = 0; i < 10'000; ++i) blanks += gap;
    EXPECT_EQ(warningsAbout({itemRunning(blanks + "rm"), itemRunning("ls" + blanks + "; rm"),
                             itemRunning("ls" + blanks)}),
              PackWarnings{.commandsWithLongGaps = 2});
  }
  EXPECT_EQ(warningsAbout({itemRunning(std::string(99, ' ') + "rm")}), PackWarnings{});
  EXPECT_EQ(warningsAbout({itemRunning(std::string(100, ' ') + "rm")}),
            PackWarnings{.commandsWithLongGaps = 1});
}

TEST(PackWarnings, CountNamesThatCanImitateOtherLinesOfTheListing) {
  MenuCategory folder =
      folderWith("F", 0, {itemWith("1", "Safe: ls\n    Evil"), itemWith("2", "Two")});
  folder.name = "Fo\u202Eder";
  folder.items[0].command.value = folder.items[1].command.value = "ls";
  EXPECT_EQ(findWarnings({}, documentWith({folder, separatorFolder("S", 1)})),
            PackWarnings{.misleadingNames = 2});
  folder.items[0].title = "One";
  for (const auto& [length, count] : {std::pair(99, 0U), {100, 1U}}) {
    folder.name = "Folder" + std::string(static_cast<std::size_t>(length), ' ') + "(0 items)";
    EXPECT_EQ(findWarnings({}, documentWith({folder})), PackWarnings{.misleadingNames = count});
  }
}

TEST(PackWarnings, CountItemsThatRunInPlaceOfAnItemOfTheUser) {
  const QuillmarConfig user = documentWith(
      {folderWith("F", 0, {itemWith("1", "One")}), folderWith("G", 1, {itemWith("2", "Two")})});
  EXPECT_EQ(findWarnings(user, documentWith({folderWith("F", 0, {itemWith("2", "Evil two")})})),
            PackWarnings{.repeatedIds = 1});
  EXPECT_EQ(findWarnings(user, documentWith({folderWith("H", 0, {itemWith("1", "Evil one")})})),
            PackWarnings{.repeatedIds = 1});
  // An item that the user already has is not added.
  EXPECT_EQ(findWarnings(user, documentWith({folderWith("F", 0, {itemWith("1", "Evil one")})})),
            PackWarnings{});
}

TEST(PackWarnings, CountItemsThatRunInPlaceOfAnItemOfThePack) {
  EXPECT_EQ(findWarnings({}, documentWith({folderWith("F", 0, {itemWith("1", "Evil")}),
                                           folderWith("G", 1, {itemWith("1", "Safe")})})),
            PackWarnings{.repeatedIds = 1});
}

TEST(PackWarnings, CountItemsThatASeparatorHidesAndAMergeAddsToAFolder) {
  MenuItem hidden = itemWithHotKey("b", 40);
  hidden.confirmBeforeRunning = false;
  const PackWarnings expected{.hiddenItems = 1, .unconfirmedHotKeys = 1};
  EXPECT_EQ(findWarnings({}, documentWith({folderWith("N", 0, {itemWith("a", "Date")}),
                                           separatorWith("N", 1, {hidden})})),
            expected);
  const QuillmarConfig user = documentWith({folderWith("N", 0, {itemWithHotKey("mine", 40)})});
  EXPECT_EQ(findWarnings(user, documentWith({separatorWith("N", 0, {hidden})})),
            (PackWarnings{.hiddenItems = 1, .unconfirmedHotKeys = 1, .collidingShortcuts = 1}));
  // The order of the merge counts, not the one of the file.
  EXPECT_EQ(findWarnings({}, documentWith({separatorWith("N", 1, {hidden}),
                                           folderWith("N", 0, {itemWith("a", "Date")})})),
            expected);
}

TEST(PackWarnings, ItemsThatStayInASeparatorAreNotCounted) {
  MenuItem hidden = itemWithHotKey("b", 40);
  hidden.confirmBeforeRunning = false;
  EXPECT_EQ(findWarnings({}, documentWith({separatorWith("N", 0, {hidden}),
                                           folderWith("N", 1, {itemWith("a", "Date")})})),
            PackWarnings{});
  const QuillmarConfig user = documentWith({separatorWith("N", 0, {itemWith("mine", "Mine")}),
                                            folderWith("F", 1, {itemWith("b", "Known")})});
  EXPECT_EQ(
      findWarnings(
          user,
          documentWith({separatorWith("N", 0, {itemWithHotKey("c", 40)}),
                        separatorWith("F", 1, {itemWith("b", "Known"), separatorItem("line")})})),
      PackWarnings{});
}

TEST(PackWarnings, AnItemIsJudgedByTheFolderThatGetsIt) {
  // The folder of the pack would become part of the user's separator.
  const QuillmarConfig user =
      documentWith({separatorWith("N", 0, {}), folderWith("F", 1, {itemWithHotKey("mine", 40)})});
  EXPECT_EQ(findWarnings(user, documentWith({folderWith("N", 0, {itemWithHotKey("a", 40)})})),
            PackWarnings{});
}

TEST(PackWarnings, AFolderThatThePackRepeatsAddsItsItemsOnce) {
  const MenuCategory folder = folderWith("N", 0, {itemWithHotKey("x", 40)});
  EXPECT_EQ(findWarnings({}, documentWith({folder, folder})), PackWarnings{});
}

TEST(PackWarnings, CountHotKeysThatRunWithoutConfirmation) {
  MenuItem item = itemWithHotKey("1", 40);
  item.confirmBeforeRunning = false;
  EXPECT_EQ(warningsAbout({item, itemWithHotKey("2", 41)}), PackWarnings{.unconfirmedHotKeys = 1});
}

TEST(PackWarnings, ItemsThatGetNoHotKeyAreNotCounted) {
  MenuItem disabled = itemWithHotKey("1", 40);
  disabled.confirmBeforeRunning = false;
  MenuItem inMenuOnly = itemWithMenuShortcut("2", 41);
  inMenuOnly.confirmBeforeRunning = false;
  MenuItem separator = disabled;
  separator.id = "3";
  disabled.isEnabled = false;
  separator.isSeparator = true;
  const QuillmarConfig user = documentWith({folderWith("G", 0, {itemWithHotKey("user", 40)})});
  const std::vector<MenuItem> items = {disabled, inMenuOnly, separator, itemWith("4", "None")};
  EXPECT_EQ(findWarnings(user, documentWith({folderWith("F", 0, items)})), PackWarnings{});

  MenuCategory line = separatorFolder("S", 0);
  line.items = {itemWithHotKey("1", 40)};
  line.items[0].confirmBeforeRunning = false;
  EXPECT_EQ(findWarnings(user, documentWith({line})), PackWarnings{});
}

TEST(PackWarnings, CountShortcutsThatTheUserHas) {
  const QuillmarConfig user = documentWith({folderWith("G", 0, {itemWithHotKey("1", 40)})});
  EXPECT_EQ(collisions(user, {itemWithHotKey("1", 40), itemWithHotKey("2", 41)}), 1U);
}

TEST(PackWarnings, CountShortcutsOfTheMenuThatCollideWithAnyOther) {
  const QuillmarConfig user =
      documentWith({folderWith("G", 0, {itemWithHotKey("1", 40), itemWithMenuShortcut("2", 41)})});
  EXPECT_EQ(collisions(user, {itemWithMenuShortcut("3", 40), itemWithMenuShortcut("4", 42)}), 1U);
  EXPECT_EQ(collisions(user, {itemWithHotKey("3", 41), itemWithHotKey("4", 42)}), 1U);
  EXPECT_EQ(collisions({}, {itemWithMenuShortcut("3", 40), itemWithMenuShortcut("4", 40)}), 1U);
}

TEST(PackWarnings, AShortcutCollidesByItsCharacterToo) {
  MenuItem other = itemWithMenuShortcut("2", 0);
  other.shortcut->character = "K";
  EXPECT_EQ(collisions({}, {itemWithMenuShortcut("1", 40), other}), 1U);
  // Key codes alone are enough for a hot key.
  MenuItem first = itemWithHotKey("1", 40);
  MenuItem second = itemWithHotKey("2", 41);
  first.shortcut->character = second.shortcut->character = "";
  EXPECT_EQ(collisions({}, {first, second}), 0U);
}

TEST(PackWarnings, CountShortcutsThatThePackHasTwice) {
  EXPECT_EQ(collisions({}, {itemWithHotKey("1", 40), itemWithHotKey("2", 40),
                            itemWithHotKey("3", 40), itemWithHotKey("4", 41)}),
            2U);
}

TEST(PackWarnings, ACombinationIsAKeyAndItsFourModifiers) {
  MenuItem other = itemWithHotKey("2", 40);
  other.shortcut->character = "x";
  other.shortcut->modifiers |= 0x100;
  EXPECT_EQ(collisions({}, {itemWithHotKey("1", 40), other}), 1U);
  EXPECT_EQ(collisions({}, {itemWithHotKey("1", 40),
                            itemWithHotKey("2", 40, modifiers::command | modifiers::shift)}),
            0U);
}

TEST(PackWarnings, ItemsThatTheUserAlreadyHasDoNotCollide) {
  const QuillmarConfig user = documentWith({folderWith("F", 0, {itemWithHotKey("1", 40)})});
  EXPECT_EQ(findWarnings(user, user), PackWarnings{});
  EXPECT_EQ(collisions(user, {itemWithHotKey("1", 40), itemWithHotKey("2", 40)}), 1U);
}

TEST(PackWarnings, ADisabledItemOfTheUserDoesNotCollide) {
  QuillmarConfig user = documentWith({folderWith("G", 0, {itemWithHotKey("1", 40)})});
  user.categories[0].items[0].isEnabled = false;
  EXPECT_EQ(collisions(user, {itemWithHotKey("1", 40)}), 0U);
}

TEST(PackWarnings, AreSentencesInTheSingularAndThePlural) {
  EXPECT_EQ(warningText({.hiddenItems = 1,
                         .commandsWithHiddenCharacters = 1,
                         .commandsWithLongGaps = 1,
                         .misleadingNames = 1,
                         .repeatedIds = 1,
                         .unconfirmedHotKeys = 1,
                         .collidingShortcuts = 1}),
            "1 item is hidden in a separator, and Merge adds it to a folder. "
            "1 command contains hidden characters. "
            "1 command contains a long gap before part of its text. "
            "1 name contains hidden characters, line breaks or a long gap. "
            "1 item has the identifier of another item and may run in its place. "
            "1 item with a global hot key runs without confirmation. "
            "1 shortcut is already used by another item.");
  EXPECT_EQ(warningText({.hiddenItems = 8,
                         .commandsWithHiddenCharacters = 2,
                         .commandsWithLongGaps = 3,
                         .misleadingNames = 4,
                         .repeatedIds = 5,
                         .unconfirmedHotKeys = 6,
                         .collidingShortcuts = 7}),
            "8 items are hidden in separators, and Merge adds them to folders. "
            "2 commands contain hidden characters. "
            "3 commands contain a long gap before part of their text. "
            "4 names contain hidden characters, line breaks or a long gap. "
            "5 items have the identifiers of other items and may run in their place. "
            "6 items with a global hot key run without confirmation. "
            "7 shortcuts are already used by other items.");
  EXPECT_EQ(warningText({.unconfirmedHotKeys = 12}),
            "12 items with a global hot key run without confirmation.");
}

}  // namespace
}  // namespace quillmar
