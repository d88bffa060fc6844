#include "import/import_sheet_controller.h"

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "import/pack_details_controller.h"
#include "tests/core/import_fixture.h"
#include "tests/key_presses.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsNull;
using testing::Not;
using testing::NotNull;
using testing::SizeIs;

std::string repeated(std::string_view text, std::size_t count) {
  std::string all;
  for (std::size_t i = 0; i < count; ++i) all += text;
  return all;
}

class ImportSheetTest : public ImportFixture {
 protected:
  ImportSheetTest() { open({folderWith("F", 0, {itemWith("I", "Mine")})}); }

  /// Shows the review of the pack.
  void present(const QuillmarConfig& pack, const std::string& source = "tools.json") {
    review.emplace(memory.windows, *settings, pack, source);
    review->buildUI();
    ASSERT_TRUE(review->present(
        controller->window(), [this](std::optional<ImportMode> mode) { answers.push_back(mode); }));
  }

  std::string title() { return labelTexts(*sheet()).at(0); }
  std::string subtitle() { return labelTexts(*sheet()).at(1); }

  /// The subtitle of a pack with this description.
  std::string subtitleFor(const std::string& description) {
    QuillmarConfig pack = packNamed("Tools");
    pack.description = description;
    if (sheet() != nullptr) review->discard();
    present(pack);
    return subtitle();
  }

  std::string titleFor(const std::string& name) {
    if (sheet() != nullptr) review->discard();
    present(packNamed(name));
    return title();
  }

  std::vector<std::optional<ImportMode>> answers;
  std::optional<ImportSheetController> review;
};

// What it shows.

TEST_F(ImportSheetTest, ShowsTheContentsOfThePackAndWhatAMergeAdds) {
  QuillmarConfig pack = packNamed("Tools");
  pack.description = "Useful commands";
  present(pack);
  EXPECT_THAT(
      windowOutline(*sheet()),
      ElementsAre("column leading spacing 10 insets 20 20 20 20",
                  "  label bold 14: Add “Tools” to Quillmar?",
                  "  label 11 secondary wrapping width 480: Useful commands\nFrom tools.json",
                  HasSubstr("  text view read-only 11 width 480 called Contents of the pack:"),
                  "  button: Show Details…",
                  "  label 11 wrapping width 480: Merge adds 1 folder and 1 item. Items you "
                  "already have are left unchanged.",
                  "  row centred spacing 8 width 480",  //
                  "    button: Replace Everything…",    //
                  "    space",                          //
                  "    button escape: Cancel",          //
                  "    button return: Merge"));
}

TEST_F(ImportSheetTest, HasTheStatedSizeAndAPlainListing) {
  present(packNamed("Tools"));
  EXPECT_EQ(sheet()->contentSize(), (Size{520, 420}));
  EXPECT_FALSE(memory.windows.resizableOnScreen(*sheet()));
  EXPECT_TRUE(sheet()->ignoresEarlyClicks());
  const TextView& text = *viewsOf<TextView>(*sheet()).at(0);
  EXPECT_TRUE(text.font().monospaced);
  EXPECT_EQ(text.font().weight, FontWeight::regular);
  EXPECT_EQ(text.inset(), 6);
  EXPECT_FALSE(text.editable());
  EXPECT_TRUE(text.showsInvisibleCharacters());
  EXPECT_EQ(memory.windows.focused(*sheet()), &text);
}

TEST_F(ImportSheetTest, APackWithoutANameIsCalledImportedSettings) {
  present({});
  EXPECT_EQ(title(), "Add “Imported settings” to Quillmar?");
  EXPECT_EQ(subtitle(), "From tools.json");
  EXPECT_EQ(listing(), "");
}

TEST_F(ImportSheetTest, AnEmptyNameAndAnEmptyDescriptionAreShownAsTheyAre) {
  QuillmarConfig pack = packNamed("");
  pack.description = "";
  present(pack);
  EXPECT_EQ(title(), "Add “” to Quillmar?");
  EXPECT_EQ(subtitle(), "\nFrom tools.json");
}

TEST_F(ImportSheetTest, TheSummaryCountsOnlyWhatIsNew) {
  present({});
  EXPECT_THAT(summary(), ElementsAre("Merge adds 0 folders and 0 items. Items you already have are "
                                     "left unchanged."));
  review->discard();
  present(
      packOf({folderWith("F", 0, {itemWith("I", "Mine"), itemWith("J", "New")}), folderWith("G", 0),
              folderWith("H", 0, {itemWith("K", "K"), itemWith("L", "L")})}));
  EXPECT_THAT(summary(), ElementsAre("Merge adds 2 folders and 3 items. Items you already have are "
                                     "left unchanged."));
}

TEST_F(ImportSheetTest, APackThatTheUserAlreadyHasAddsNothing) {
  present(settings->config);
  EXPECT_THAT(summary(), ElementsAre("Merge adds 0 folders and 0 items. Items you already have are "
                                     "left unchanged."));
}

TEST_F(ImportSheetTest, WarningsAreALineBelowTheSummary) {
  QuillmarConfig pack = packNamed("Tools");
  pack.categories[0].items[0].command.value = "ls\u200B";
  present(pack);
  EXPECT_THAT(summary(), ElementsAre(HasSubstr("Merge adds 1 folder"),
                                     "1 command contains hidden characters."));
}

// The listing.

TEST(ImportSheet, DescribesFoldersByTheirOrderAndItemsAsTheyAreStored) {
  MenuItem disabled = itemWith("3", "Off");
  disabled.isEnabled = false;
  const std::string listing = ImportSheetController::describe(packOf(
      {folderWith("B", 2, {itemWith("2", "Zeta"), separatorItem("s"), disabled, disabled}),
       separatorFolder("S", 1), folderWith("C", 3), folderWith("A", 0, {itemWith("1", "One")})}));
  EXPECT_EQ(listing,
            "Folder A  (1 items)\n"
            "    One: echo One\n"
            "\n"
            "----\n"
            "Folder B  (3 items)\n"
            "    Zeta: echo Zeta\n"
            "    ----\n"
            "    Off: echo Off\n"
            "    Off: echo Off\n"
            "\n"
            "Folder C  (0 items)\n");
}

TEST(ImportSheet, DescribesACommandOfSeveralLinesOnOneLine) {
  MenuItem item = itemWith("1", "Script");
  item.command.value = "cd /\n\nls\r\nend\n";
  EXPECT_EQ(ImportSheetController::describe(packOf({folderWith("A", 0, {item})})),
            "Folder A  (1 items)\n    Script: cd /  ls\r end \n");
}

TEST(ImportSheet, DescribesADocumentWithoutFoldersAsNothing) {
  EXPECT_EQ(ImportSheetController::describe({}), "");
  EXPECT_EQ(ImportSheetController::describe(packOf({separatorFolder("S", 0)})), "----");
}

TEST_F(ImportSheetTest, TheListingKeepsEveryCharacterOfACommand) {
  const std::string command = "a\u202Eb\r\u2029c\u200B\x1B[8m\U000E0041 \t";
  QuillmarConfig pack = packNamed("Tools");
  pack.categories[0].items[0].command.value = command;
  present(pack);
  EXPECT_THAT(listing(), HasSubstr("    Item: " + command + "\n"));
}

// Answers.

TEST_F(ImportSheetTest, EachButtonClosesTheSheetAndAnswersOnce) {
  const std::pair<const char*, std::optional<ImportMode>> expected[] = {
      {"Merge", ImportMode::merge},
      {"Replace Everything…", ImportMode::replace},
      {"Cancel", std::nullopt}};
  for (const auto& [button, mode] : expected) {
    answers.clear();
    present(packNamed("Tools"));
    pressInSheet(button);
    EXPECT_THAT(sheet(), IsNull());
    EXPECT_THAT(answers, ElementsAre(mode)) << button;
    review->mergePressed();
    review->cancelPressed();
    EXPECT_THAT(answers, SizeIs(1)) << button;
  }
  EXPECT_EQ(posts, 0);
}

TEST_F(ImportSheetTest, ReturnMergesAndEscapeCancelsFromTheListing) {
  present(packNamed("Tools"));
  sheet()->key(pressOf(keys::returnKey));
  EXPECT_THAT(answers, ElementsAre(ImportMode::merge));
  present(packNamed("Tools"));
  sheet()->key(pressOf(keys::escape));
  EXPECT_THAT(answers, ElementsAre(ImportMode::merge, std::nullopt));
}

TEST_F(ImportSheetTest, SpaceInTheListingPressesNoButton) {
  present(packNamed("Tools"));
  sheet()->key(pressOf(keys::space));
  EXPECT_THAT(answers, IsEmpty());
}

TEST_F(ImportSheetTest, ReplaceIsReachedWithTheKeyboardFocusOnly) {
  present(packNamed("Tools"));
  const Button* const replace = buttonTitled(*sheet(), "Replace Everything…");
  EXPECT_FALSE(replace->keyEquivalent());
  sheet()->makeFirstResponder(buttonTitled(*sheet(), "Replace Everything…"));
  sheet()->key(pressOf(keys::space));
  EXPECT_THAT(answers, ElementsAre(ImportMode::replace));
}

TEST_F(ImportSheetTest, BeforeItIsPresentedTheButtonsDoNothing) {
  review.emplace(memory.windows, *settings, packNamed("Tools"), "tools.json");
  review->buildUI();
  review->mergePressed();
  review->replacePressed();
  review->cancelPressed();
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_THAT(answers, IsEmpty());
}

TEST_F(ImportSheetTest, ADiscardedSheetDoesNotAnswer) {
  present(packNamed("Tools"));
  review->discard();
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_THAT(answers, IsEmpty());
}

TEST_F(ImportSheetTest, ClosingTheSettingsWindowCancels) {
  present(packNamed("Tools"));
  controller->window().close();
  EXPECT_THAT(answers, ElementsAre(std::nullopt));
}

// Details.

TEST_F(ImportSheetTest, DetailsAreASheetOfTheReview) {
  present(packNamed("Tools"));
  pressInSheet("Show Details…");
  Window* const details = sheet()->sheet();
  ASSERT_THAT(details, NotNull());
  EXPECT_EQ(details, &review->details()->window());
  const TextView& text = *viewsOf<TextView>(*details).at(0);
  EXPECT_THAT(text.text(), HasSubstr("echo Item"));
  EXPECT_FALSE(text.editable());
  EXPECT_TRUE(text.showsInvisibleCharacters());
  EXPECT_TRUE(text.font().monospaced);
  EXPECT_EQ(memory.windows.focused(*details), &text);
}

TEST_F(ImportSheetTest, DetailsShowTheWholeDescription) {
  QuillmarConfig pack = packNamed("Tools");
  pack.description = "First line.\n" + std::string(1'000, 'd');
  present(pack);
  pressInSheet("Show Details…");
  EXPECT_THAT(viewsOf<TextView>(*sheet()->sheet()).at(0)->text(),
              HasSubstr("│ First line.\n    │ " + std::string(1'000, 'd') + "\n"));
}

TEST_F(ImportSheetTest, ReturnEscapeAndCloseEndTheDetailsOnly) {
  present(packNamed("Tools"));
  for (const auto& close : std::vector<std::function<void(Window&)>>{
           [](Window& details) { details.key(pressOf(keys::returnKey)); },
           [](Window& details) { details.key(pressOf(keys::escape)); },
           [](const Window& details) { buttonTitled(details, "Close")->press(); }}) {
    pressInSheet("Show Details…");
    Window* const details = sheet()->sheet();
    ASSERT_THAT(details, NotNull());
    close(*details);
    EXPECT_THAT(sheet()->sheet(), IsNull());
    EXPECT_EQ(sheet(), &review->window());
  }
  EXPECT_THAT(answers, IsEmpty());
  pressInSheet("Merge");
  EXPECT_THAT(answers, ElementsAre(ImportMode::merge));
}

// Texts of strangers.

TEST_F(ImportSheetTest, ANameCannotImitateTheTextOfTheDialog) {
  EXPECT_EQ(titleFor("Tools” to Quillmar?\nFrom quillmar.example\n\nMerge adds nothing. “"),
            "Add “Tools” to Quillmar? From quillmar.example  Merge adds nothing. “” to Quillmar?");
  EXPECT_EQ(titleFor("a\u2028b\u202Ec\u200B\r\nd\te"),
            "Add “a b‹U+202E›c‹U+200B› d e” to Quillmar?");
  const Label& label = *viewsOf<Label>(*sheet()).at(0);
  EXPECT_FALSE(label.wraps());
  EXPECT_EQ(label.maximumWidth(), 480);
}

TEST_F(ImportSheetTest, ALongNameEndsInAnEllipsis) {
  EXPECT_EQ(titleFor(std::string(100, 'n')), "Add “" + std::string(100, 'n') + "” to Quillmar?");
  EXPECT_EQ(titleFor(std::string(1'000'000, 'n')),
            "Add “" + std::string(99, 'n') + "…” to Quillmar?");
  EXPECT_EQ(titleFor(repeated("ü", 1'000'000)), "Add “" + repeated("ü", 99) + "…” to Quillmar?");
}

TEST_F(ImportSheetTest, ADescriptionIsOneParagraphOfLimitedLength) {
  EXPECT_EQ(subtitleFor("Safe.\nFrom quillmar.example\n\n\n"),
            "Safe. From quillmar.example   \nFrom tools.json");
  EXPECT_EQ(subtitleFor(std::string(320, 'd')), std::string(320, 'd') + "\nFrom tools.json");
  EXPECT_EQ(subtitleFor(std::string(1'000'000, 'd')), std::string(319, 'd') + "…\nFrom tools.json");
  EXPECT_EQ(subtitleFor("\u202Eevil"), "‹U+202E›evil\nFrom tools.json");
}

TEST_F(ImportSheetTest, ADescriptionAboveWarningsIsShorter) {
  QuillmarConfig pack = packNamed("Tools");
  pack.categories[0].items[0].command.value = "ls\u200B";
  pack.description = std::string(1'000'000, 'd');
  present(pack);
  EXPECT_EQ(subtitle(), std::string(159, 'd') + "…\nFrom tools.json");
}

TEST_F(ImportSheetTest, AnItemThatASeparatorHidesIsCountedAndShownInTheDetails) {
  MenuCategory hiding = separatorFolder("F", 0);
  hiding.items = {itemWith("J", "Hidden")};
  present(packOf({hiding}));
  EXPECT_EQ(listing(), "----");
  EXPECT_THAT(summary(), ElementsAre("Merge adds 0 folders and 1 item. Items you already have are "
                                     "left unchanged.",
                                     "1 item is hidden in a separator, and Merge adds it to a "
                                     "folder."));
  pressInSheet("Show Details…");
  const std::string details = viewsOf<TextView>(*sheet()->sheet()).at(0)->text();
  EXPECT_THAT(details, HasSubstr("Merge adds its new items to the folder “Folder F”"));
  EXPECT_THAT(details, HasSubstr("Hidden"));
}

TEST_F(ImportSheetTest, TheSourceIsShownInFull) {
  const std::string host = "github.example." + std::string(232, 'a') + ".evil.org";
  ASSERT_LE(host.size(), 256U);
  present(packNamed("Tools"), host.substr(0, 253));
  EXPECT_EQ(subtitle(), "From " + host.substr(0, 253));
  review->discard();
  present(packNamed("Tools"), "a\n\u202Eb");
  EXPECT_EQ(subtitle(), "From a ‹U+202E›b");
}

}  // namespace
}  // namespace quillmar
