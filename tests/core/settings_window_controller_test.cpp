#include "settings_ui/settings_window_controller.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/outline_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/text_view.h"
#include "settings_ui/folder_editor_controller.h"
#include "settings_ui/item_editor_controller.h"
#include "tests/core/settings_window_fixture.h"
#include "tests/key_presses.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;
using testing::SizeIs;

class SettingsWindowControllerTest : public SettingsWindowFixture {
 protected:
  OutlineRow value(const std::string& row) {
    return outline().value(outline().indexOf(row).value());
  }

  /// Completes the item editor that is open.
  void addNewItem() {
    auto* const editor = dynamic_cast<ItemEditorController*>(controller->activeSheet());
    ASSERT_THAT(editor, NotNull());
    editor->titleField().type("New");
    editor->commandView().type("true");
    pressInSheet("Add");
  }

  void expectAlert(const std::string& message, const std::string& informativeText) {
    ASSERT_THAT(sheet(), NotNull());
    EXPECT_THAT(labelTexts(*sheet()), ElementsAre(message, informativeText));
  }
};

// The window.

TEST_F(SettingsWindowControllerTest, HasTheStatedSizes) {
  open({});
  Window& window = controller->window();
  EXPECT_EQ(memory.windows.titleOnScreen(window), "Quillmar Settings");
  EXPECT_EQ(window.contentSize(), (Size{600, 520}));
  EXPECT_EQ(memory.windows.minimumSizeOnScreen(window), (Size{520, 440}));
  EXPECT_TRUE(memory.windows.resizableOnScreen(window));
  EXPECT_TRUE(memory.windows.placedInMiddle(window));
  EXPECT_EQ(memory.windows.focused(window), &outline());
}

TEST_F(SettingsWindowControllerTest, ShowsTheMenuTabFirst) {
  open({});
  std::vector<std::string> lines = windowOutline(controller->window());
  lines.resize(20);
  EXPECT_THAT(lines, ElementsAre("column filled spacing 0 insets 12 12 12 12",  //
                                 "  tabs: [Menu Items], General",
                                 "    column filled spacing 8 insets 12 12 12 12",
                                 "      outline then 10 called Menu items",
                                 "      row centred spacing 8",         //
                                 "        button: Add Folder",          //
                                 "        button: Add Item",            //
                                 "        button: Add Separator",       //
                                 "        button: Edit",                //
                                 "        button: Delete",              //
                                 "        space",                       //
                                 "        button called Move Up: ▲",    //
                                 "        button called Move Down: ▼",  //
                                 "      row centred spacing 8",         //
                                 "        button: Import…",             //
                                 "        button: Export…",             //
                                 "        space",                       //
                                 "        button return: Close",        //
                                 "    scroll hidden",                   //
                                 "      column leading spacing 8 insets 12 12 12 12"));
}

TEST_F(SettingsWindowControllerTest, ReturnClosesTheWindowAndItOpensAgain) {
  open({folderWith("F", 0)});
  controller->window().key(pressOf(keys::returnKey));
  EXPECT_FALSE(controller->window().visible());
  EXPECT_TRUE(controller->window().show({}));
  EXPECT_THAT(rows(), ElementsAre("F"));
}

TEST_F(SettingsWindowControllerTest, EscapeClosesTheWindow) {
  open({});
  controller->window().key(pressOf(keys::escape));
  EXPECT_FALSE(controller->window().visible());
}

// Rows.

TEST_F(SettingsWindowControllerTest, ShowsFoldersBySortOrderWithTheirItemsInStoredOrder) {
  open({folderWith("B", 5, {itemWith("b2", "Zeta"), itemWith("b1", "Alpha")}),
        separatorFolder("S", 3), folderWith("A", 1, {itemWith("a1", "One"), separatorItem("a2")}),
        folderWith("C", 5)});
  EXPECT_THAT(rows(), ElementsAre("A", "A|a1", "A|a2", "S", "B", "B|b2", "B|b1", "C"));
}

TEST_F(SettingsWindowControllerTest, AFolderShowsItsSymbolAndWhetherItIsAtTheTopLevel) {
  MenuCategory folder = folderWith("F", 0);
  folder.iconSymbolName = " star ";
  folder.showAtTopLevel = true;
  open({folder});
  const OutlineRow row = value("F");
  ASSERT_THAT(row.cells, SizeIs(3));
  const auto& symbol = std::get<SymbolCell>(row.cells[0]);
  EXPECT_EQ(symbol.image->name, "star");
  EXPECT_EQ(symbol.width, 16);
  EXPECT_EQ(
      row.cells[1],
      OutlineCell(TextCell{.text = "Folder F", .font = Font::boldSystem(13), .truncates = true}));
  EXPECT_EQ(row.cells[2], OutlineCell(TextCell{.text = "shown at top level",
                                               .font = Font::system(11),
                                               .color = TextColor::secondaryLabel}));
}

TEST_F(SettingsWindowControllerTest,
       AFolderWithoutAnIconOrWithAnUnknownSymbolShowsTheFolderSymbolAndAnItemShowsNone) {
  MenuCategory unknown = folderWith("U", 1, {itemWith("i", "Item"), itemWith("j", "Other")});
  unknown.iconSymbolName = "no.such.symbol";
  unknown.items[1].iconSymbolName = "no.such.symbol";
  MenuCategory blank = folderWith("B", 2);
  blank.iconSymbolName = " \t";
  open({folderWith("N", 0), unknown, blank});
  for (const char* const row : {"N", "U", "B"}) {
    EXPECT_EQ(std::get<SymbolCell>(value(row).cells[0]).image->name, "folder") << row;
  }
  for (const char* const row : {"U|i", "U|j"}) {
    const auto cells = value(row).cells;
    ASSERT_THAT(cells, SizeIs(2)) << row;
    EXPECT_TRUE(std::holds_alternative<TextCell>(cells[1])) << row;
  }
}

TEST_F(SettingsWindowControllerTest, AnItemShowsItsStateItsSymbolItsTitleAndItsShortcut) {
  MenuItem item = itemWith("I", "Copy");
  item.isEnabled = false;
  item.iconSymbolName = "terminal ";
  item.shortcut = KeyboardShortcut{
      .keyCode = 40, .character = "k", .modifiers = modifiers::command | modifiers::shift};
  open({folderWith("F", 0, {item})});
  const auto cells = value("F|I").cells;
  ASSERT_THAT(cells, SizeIs(4));
  EXPECT_EQ(cells[0], OutlineCell(CheckboxCell{.identifier = "F|I", .state = ControlState::off}));
  EXPECT_EQ(std::get<SymbolCell>(cells[1]).image->name, "terminal");
  EXPECT_EQ(cells[2], OutlineCell(TextCell{.text = "Copy", .truncates = true}));
  EXPECT_EQ(cells[3],
            OutlineCell(TextCell{
                .text = "⇧⌘K", .font = Font::system(11), .color = TextColor::secondaryLabel}));
}

TEST_F(SettingsWindowControllerTest, SeparatorsShowTheirKind) {
  open({separatorFolder("S", 0), folderWith("F", 1, {separatorItem("s")})});
  EXPECT_EQ(value("S").cells,
            std::vector<OutlineCell>({TextCell{.text = "————  separator between folders",
                                               .color = TextColor::tertiaryLabel}}));
  EXPECT_EQ(value("F|s").cells,
            std::vector<OutlineCell>(
                {TextCell{.text = "————  separator", .color = TextColor::tertiaryLabel}}));
}

TEST_F(SettingsWindowControllerTest, ARowOfSomethingDeletedIsEmpty) {
  open({folderWith("F", 0, {itemWith("I", "Item")})});
  settings->config.categories[0].items.clear();
  EXPECT_THAT(value("F|I").cells, IsEmpty());
  settings->config.categories.clear();
  EXPECT_THAT(value("F").cells, IsEmpty());
}

TEST_F(SettingsWindowControllerTest, ARowShowsItsOwnFolderAfterTheFoldersHaveChangedPlaces) {
  open({folderWith("F", 0), folderWith("G", 1)});
  std::swap(settings->config.categories[0], settings->config.categories[1]);
  EXPECT_EQ(value("F").title(), "Folder F");
}

TEST_F(SettingsWindowControllerTest, TheCheckboxOfAnItemEnablesIt) {
  open({folderWith("F", 0, {itemWith("I", "Item")})});
  outline().toggle(1, "F|I");
  EXPECT_FALSE(item("I").isEnabled);
  EXPECT_EQ(value("F|I").checkbox()->state, ControlState::off);
  outline().toggle(1, "F|I");
  EXPECT_TRUE(item("I").isEnabled);
}

// Adding.

TEST_F(SettingsWindowControllerTest, AddFolderOpensAnEmptyFolderEditor) {
  open({folderWith("F", 0)});
  press("Add Folder");
  EXPECT_EQ(sheet()->title(), "Add Folder");
  auto* const editor = dynamic_cast<FolderEditorController*>(controller->activeSheet());
  ASSERT_THAT(editor, NotNull());
  editor->nameField().type("New");
  pressInSheet("Add");
  EXPECT_THAT(controller->activeSheet(), IsNull());
  EXPECT_THAT(rows(), SizeIs(2));
  EXPECT_EQ(settings->categories()[1].name, "New");
  EXPECT_EQ(onDisk(), settings->config);
}

TEST_F(SettingsWindowControllerTest,
       WithoutFoldersAddItemCreatesTheFolderGeneralWhichStaysIfTheSheetIsCancelled) {
  open({separatorFolder("S", 0)});
  press("Add Item");
  EXPECT_EQ(sheet()->title(), "Add Item");
  pressInSheet("Cancel");
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_THAT(controller->activeSheet(), IsNull());
  ASSERT_THAT(onDisk().categories, SizeIs(2));
  const MenuCategory general = onDisk().categories[1];
  EXPECT_EQ(general.name, "General");
  EXPECT_EQ(general.iconSymbolName, std::nullopt);
  EXPECT_FALSE(general.showAtTopLevel);
  EXPECT_THAT(general.items, IsEmpty());
}

TEST_F(SettingsWindowControllerTest, InAnEmptyDocumentAddItemPutsTheItemIntoANewFolderGeneral) {
  open({});
  press("Add Item");
  addNewItem();
  ASSERT_THAT(onDisk().categories, SizeIs(1));
  EXPECT_EQ(onDisk().categories[0].name, "General");
  EXPECT_EQ(onDisk().categories[0].items.at(0).title, "New");
}

TEST_F(SettingsWindowControllerTest, AddItemInsertsBehindTheSelectedItem) {
  open({folderWith("F", 0), folderWith("G", 1, {itemWith("a", "A"), itemWith("b", "B")})});
  select("G|a");
  press("Add Item");
  addNewItem();
  EXPECT_EQ(folder("G").items[1].title, "New");
}

TEST_F(SettingsWindowControllerTest, AddItemAppendsToTheSelectedFolder) {
  open({folderWith("F", 0), folderWith("G", 1, {itemWith("a", "A")})});
  select("G");
  press("Add Item");
  addNewItem();
  EXPECT_EQ(folder("G").items[1].title, "New");
}

TEST_F(SettingsWindowControllerTest,
       WithASeparatorFolderSelectedAddItemUsesTheFirstFolderInDisplayOrder) {
  open({folderWith("Z", 9), separatorFolder("S", 1), folderWith("A", 4)});
  select("S");
  press("Add Item");
  addNewItem();
  EXPECT_THAT(folder("A").items, SizeIs(1));
}

TEST_F(SettingsWindowControllerTest, AddSeparatorGoesBehindTheSelection) {
  open({folderWith("F", 0, {itemWith("a", "A"), itemWith("b", "B")}), folderWith("G", 1)});
  press("Add Separator");
  EXPECT_TRUE(settings->categories()[2].isSeparator);
  select("F|a");
  press("Add Separator");
  EXPECT_TRUE(folder("F").items[1].isSeparator);
  EXPECT_EQ(selectedRow(), "F|a");
  select("F");
  press("Add Separator");
  EXPECT_TRUE(settings->categories()[1].isSeparator);
  EXPECT_EQ(onDisk(), settings->config);
}

// Editing.

TEST_F(SettingsWindowControllerTest, EditAndADoubleClickOpenTheEditorOfTheSelection) {
  open({folderWith("F", 0, {itemWith("I", "Item")})});
  select("F");
  press("Edit");
  EXPECT_EQ(sheet()->title(), "Edit Folder");
  pressInSheet("Cancel");
  outline().doubleClick(1);
  EXPECT_EQ(sheet()->title(), "Edit Item");
  pressInSheet("Cancel");
  EXPECT_EQ(posts, 0);
}

TEST_F(SettingsWindowControllerTest, EditAndADoubleClickOnASeparatorDoNothing) {
  open({separatorFolder("S", 0), folderWith("F", 1, {separatorItem("s")})});
  for (const char* const row : {"S", "F|s"}) {
    select(row);
    press("Edit");
    EXPECT_THAT(sheet(), IsNull());
    outline().doubleClick(outline().indexOf(row).value());
    EXPECT_THAT(sheet(), IsNull());
  }
}

// Deleting.

TEST_F(SettingsWindowControllerTest, DeleteOnASeparatorDeletesItWithoutAsking) {
  open({separatorFolder("S", 0), folderWith("F", 1, {separatorItem("s")})});
  select("F|s");
  press("Delete");
  EXPECT_THAT(folder("F").items, IsEmpty());
  select("S");
  press("Delete");
  EXPECT_THAT(rows(), ElementsAre("F"));
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_EQ(posts, 2);
}

TEST_F(SettingsWindowControllerTest, DeletingAFolderAsksFirst) {
  open({folderWith("A", 3), folderWith("F", 5, {itemWith("I", "Item")}), folderWith("B", 9)});
  select("F");
  press("Delete");
  expectAlert("Delete Folder", "Are you sure you want to delete “Folder F” and all its items?");
  pressInSheet("Cancel");
  EXPECT_EQ(posts, 0);
  press("Delete");
  pressInSheet("Delete");
  EXPECT_THAT(rows(), ElementsAre("A", "B"));
  EXPECT_EQ(folder("B").sortOrder, 9);
  EXPECT_EQ(posts, 1);
}

TEST_F(SettingsWindowControllerTest, DeletingAnItemAsksFirst) {
  open({folderWith("F", 0, {itemWith("I", "Item"), itemWith("J", "Other")})});
  select("F|I");
  press("Delete");
  expectAlert("Delete Item", "Are you sure you want to delete “Item”?");
  EXPECT_TRUE(sheet()->key(pressOf(keys::escape)));
  EXPECT_EQ(posts, 0);
  press("Delete");
  EXPECT_TRUE(sheet()->key(pressOf(keys::returnKey)));
  EXPECT_THAT(rows(), ElementsAre("F", "F|J"));
  EXPECT_EQ(onDisk(), settings->config);
  EXPECT_EQ(selectedRow(), "");
}

TEST_F(SettingsWindowControllerTest, WithNothingSelectedTheButtonsDoNothing) {
  open({folderWith("F", 0, {itemWith("I", "Item")})});
  for (const char* const title : {"Edit", "Delete", "▲", "▼"}) press(title);
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_EQ(posts, 0);
}

TEST_F(SettingsWindowControllerTest, WithADeletedEntrySelectedTheButtonsDoNothing) {
  open({folderWith("F", 0, {itemWith("I", "Item")})});
  for (const char* const row : {"F|I", "F"}) {
    select(row);
    if (std::string(row) == "F") {
      settings->config.categories.clear();
    } else {
      settings->config.categories[0].items.clear();
    }
    for (const char* const title : {"Edit", "Delete", "▲", "▼"}) press(title);
    EXPECT_THAT(sheet(), IsNull());
    EXPECT_EQ(settings->config.categories.size(), std::string(row) == "F" ? 0 : 1);
  }
}

// Moving.

TEST_F(SettingsWindowControllerTest, MovingAnItemKeepsItSelected) {
  open({folderWith("F", 0, {itemWith("a", "A"), itemWith("b", "B")}),
        folderWith("G", 1, {itemWith("c", "C")})});
  select("F|b");
  press("▲");
  EXPECT_THAT(rows(), ElementsAre("F", "F|b", "F|a", "G", "G|c"));
  EXPECT_EQ(selectedRow(), "F|b");
  EXPECT_EQ(onDisk(), settings->config);
  press("▼");
  EXPECT_THAT(rows(), ElementsAre("F", "F|a", "F|b", "G", "G|c"));
}

TEST_F(SettingsWindowControllerTest, AfterMovingTheFirstItemUpItIsStillSelected) {
  open({folderWith("F", 0, {itemWith("a", "A"), itemWith("b", "B")})});
  select("F|a");
  press("▲");
  EXPECT_EQ(selectedRow(), "F|a");
  EXPECT_THAT(rows(), ElementsAre("F", "F|a", "F|b"));
  EXPECT_EQ(posts, 0);
}

TEST_F(SettingsWindowControllerTest, MovingAFolderKeepsItSelected) {
  open({folderWith("F", 0, {itemWith("a", "A")}), folderWith("G", 1)});
  select("F");
  press("▼");
  EXPECT_THAT(rows(), ElementsAre("G", "F", "F|a"));
  EXPECT_EQ(selectedRow(), "F");
}

// Changes of the document.

TEST_F(SettingsWindowControllerTest, ChangesMadeElsewhereAppearAndExpandCollapsedFolders) {
  open({folderWith("F", 0, {itemWith("a", "A")}), folderWith("G", 1, {itemWith("b", "B")})});
  outline().collapse(0);
  EXPECT_THAT(rows(), ElementsAre("F", "G", "G|b"));
  select("G|b");
  settings->config.categories.push_back(folderWith("H", 2, {itemWith("c", "C")}));
  settings->save();
  EXPECT_THAT(rows(), ElementsAre("F", "F|a", "G", "G|b", "H", "H|c"));
  EXPECT_EQ(selectedRow(), "G|b");
}

TEST_F(SettingsWindowControllerTest, AnItemThatIsAddedToACollapsedFolderAppears) {
  open({folderWith("F", 0, {itemWith("a", "A")})});
  outline().collapse(0);
  settings->addItem(itemWith("b", "B"), "F", std::nullopt);
  EXPECT_THAT(rows(), ElementsAre("F", "F|a", "F|b"));
}

TEST_F(SettingsWindowControllerTest, AnItemThatIsDeletedElsewhereWhileItIsEditedStaysDeleted) {
  open({folderWith("F", 0, {itemWith("a", "A")})});
  select("F|a");
  press("Edit");
  settings->deleteItem("a", "F");
  pressInSheet("Save");
  EXPECT_THAT(controller->activeSheet(), IsNull());
  EXPECT_THAT(folder("F").items, IsEmpty());
}

TEST_F(SettingsWindowControllerTest, AnItemIsAppendedIfTheSelectedOneIsDeletedElsewhere) {
  open({folderWith("F", 0, {itemWith("a", "A"), itemWith("b", "B")})});
  select("F|a");
  press("Add Item");
  settings->deleteItem("a", "F");
  addNewItem();
  EXPECT_EQ(folder("F").items[1].title, "New");
}

TEST_F(SettingsWindowControllerTest, AFolderThatIsDeletedElsewhereDuringTheQuestionIsNoError) {
  open({folderWith("F", 0), folderWith("G", 1)});
  select("F");
  press("Delete");
  settings->deleteCategory("F");
  pressInSheet("Delete");
  EXPECT_THAT(rows(), ElementsAre("G"));
}

TEST_F(SettingsWindowControllerTest, AFolderWhoseIdLooksLikeAnItemIsNotMistakenForIt) {
  open({folderWith("F", 0, {itemWith("I", "Mine")}),
        folderWith("F|I", 1, {itemWith("a|b\\", "Theirs")})});
  EXPECT_THAT(rows(), ElementsAre("F", "F|I", R"(F\pI)", R"(F\pI|a\pb\\)"));
  outline().toggle(3, R"(F\pI|a\pb\\)");
  EXPECT_FALSE(item("a|b\\").isEnabled);
  EXPECT_TRUE(item("I").isEnabled);

  select(R"(F\pI)");
  press("▲");
  EXPECT_EQ(selectedRow(), R"(F\pI)");
  press("Delete");
  pressInSheet("Delete");
  EXPECT_THAT(rows(), ElementsAre("F", "F|I"));
}

TEST_F(SettingsWindowControllerTest, EntriesWithEmptyIdsCanBeDeleted) {
  open({folderWith("", 0, {itemWith("", "First"), itemWith("b", "Second")})});
  ASSERT_THAT(rows(), SizeIs(3));
  select(rows()[1]);
  press("Delete");
  pressInSheet("Delete");
  EXPECT_THAT(settings->config.categories.at(0).items, ElementsAre(itemWith("b", "Second")));
  select(rows()[0]);
  press("Delete");
  pressInSheet("Delete");
  EXPECT_THAT(rows(), IsEmpty());
}

TEST(Selection, ARowOfTwoPiecesIsAnItemAndAnyOtherAFolder) {
  const auto of = [](const std::string& row) { return Selection::fromRow(&row); };
  EXPECT_EQ(Selection::fromRow(nullptr), std::nullopt);
  EXPECT_EQ(of("F"), (Selection{"F", std::nullopt}));
  EXPECT_EQ(of("F|I"), (Selection{"F", "I"}));
  EXPECT_EQ(of("|F||I|"), (Selection{"F", "I"}));
  EXPECT_EQ(of("F|"), (Selection{"F|", std::nullopt}));
  EXPECT_EQ(of("F|I|J"), (Selection{"F|I|J", std::nullopt}));
}

TEST_F(SettingsWindowControllerTest, AFileThatCannotBeWrittenIsLoggedAndTheChangeStays) {
  open({folderWith("F", 0)});
  memory.files.addFile(settingsPath, memory.files.contents(settingsPath).value(), 0444);
  press("Add Separator");
  EXPECT_THAT(rows(), SizeIs(2));
  EXPECT_THAT(log, ElementsAre(testing::StartsWith("Failed to save settings: ")));
}

TEST_F(SettingsWindowControllerTest, ClosingTheWindowWithAnOpenEditorDiscardsTheEditor) {
  open({folderWith("F", 0)});
  select("F");
  press("Edit");
  controller->window().close();
  EXPECT_THAT(controller->activeSheet(), IsNull());
  EXPECT_TRUE(controller->window().show({}));
  press("Edit");
  EXPECT_THAT(controller->activeSheet(), NotNull());
}

TEST_F(SettingsWindowControllerTest, AnEditorThatCannotBeShownIsLogged) {
  open({folderWith("F", 0)});
  memory.windows.failure = Error{"There is no display."};
  press("Add Folder");
  EXPECT_THAT(log, ElementsAre("Could not show the editor: There is no display."));
  EXPECT_THAT(controller->activeSheet(), IsNull());
  memory.windows.failure.reset();
  press("Add Folder");
  EXPECT_THAT(controller->activeSheet(), NotNull());
}

}  // namespace
}  // namespace quillmar
