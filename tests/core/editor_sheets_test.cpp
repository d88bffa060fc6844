#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/checkbox.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/pop_up_button.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/text_view.h"
#include "settings_ui/folder_editor_controller.h"
#include "settings_ui/item_editor_controller.h"
#include "shortcuts/shortcut_recorder_view.h"
#include "tests/core/settings_window_fixture.h"
#include "tests/key_presses.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsNull;
using testing::NotNull;

class FolderEditorControllerTest : public SettingsWindowFixture {
 protected:
  FolderEditorController& editor() {
    return dynamic_cast<FolderEditorController&>(*controller->activeSheet());
  }

  void add() {
    open({});
    press("Add Folder");
  }

  void edit(MenuCategory folder) {
    const std::string id = folder.id;
    open({std::move(folder)});
    select(id);
    press("Edit");
  }
};

TEST_F(FolderEditorControllerTest, HasTheStatedContents) {
  add();
  EXPECT_EQ(sheet()->title(), "Add Folder");
  EXPECT_EQ(sheet()->contentSize(), (Size{500, 200}));
  EXPECT_EQ(memory.windows.focused(*sheet()), &editor().nameField());
  EXPECT_THAT(
      windowOutline(*sheet()),
      ElementsAre("column leading spacing 16 insets 20 20 20 20",
                  "  form spacing 10 10 labels 90 width 460 then 0",  //
                  "    label: Name:",                                 //
                  "    field placeholder Folder name width 350 called Name",
                  "    label: Icon:",  //
                  "    row centred spacing 8 called Icon",
                  "      field placeholder SF Symbol name, e.g. bolt.fill width 260 called Icon",
                  "      image width 22 height 22 called Preview of the icon",
                  "    label 10 secondary wrapping: Optional. Any SF Symbol name; the SF Symbols "
                  "app lists them all.",
                  "    checkbox: Show items directly in the menu, not in a submenu", "  space",
                  "  row centred spacing 8 width 460",  //
                  "    space",                          //
                  "    button escape: Cancel",          //
                  "    button return: Add"));
  EXPECT_EQ(editor().grid().rows()[2].topPadding, -6);
}

TEST_F(FolderEditorControllerTest, ShowsTheFolderThatIsEdited) {
  MenuCategory folder = folderWith("F", 0);
  folder.iconSymbolName = "star";
  folder.showAtTopLevel = true;
  edit(folder);
  EXPECT_EQ(sheet()->title(), "Edit Folder");
  EXPECT_EQ(editor().saveButton().title(), "Save");
  EXPECT_EQ(editor().nameField().text(), "Folder F");
  EXPECT_EQ(editor().iconField().text(), "star");
  EXPECT_EQ(editor().iconPreview().image()->name, "star");
  EXPECT_EQ(editor().topLevelCheckbox().state(), ControlState::on);
}

TEST_F(FolderEditorControllerTest, SavingKeepsWhatTheSheetDoesNotShow) {
  edit(folderWith("F", 7, {itemWith("I", "Item")}));
  editor().nameField().type(" \tNew name  ");
  editor().iconField().type(" bolt.fill ");
  editor().topLevelCheckbox().toggle();
  sheet()->key(pressOf(keys::returnKey));
  EXPECT_THAT(sheet(), IsNull());
  MenuCategory expected = folderWith("F", 7, {itemWith("I", "Item")});
  expected.name = "New name";
  expected.iconSymbolName = "bolt.fill";
  expected.showAtTopLevel = true;
  EXPECT_EQ(folder("F"), expected);
  EXPECT_EQ(posts, 1);
}

TEST_F(FolderEditorControllerTest, ANameOfOnlySpacesIsRefusedAndTheNameFieldGetsTheFocus) {
  edit(folderWith("F", 0));
  editor().nameField().type("  \t ");
  sheet()->makeFirstResponder(&editor().iconField());
  pressInSheet("Save");
  ASSERT_THAT(sheet(), NotNull());
  EXPECT_EQ(memory.windows.focused(*sheet()), &editor().nameField());
  EXPECT_EQ(editor().nameField().text(), "  \t ");
  EXPECT_EQ(posts, 0);
}

TEST_F(FolderEditorControllerTest, LineBreaksInAnUneditedNameAreKept) {
  MenuCategory folder = folderWith("F", 0);
  folder.name = "One\ntwo";
  edit(folder);
  editor().iconField().type("star");
  pressInSheet("Save");
  EXPECT_EQ(this->folder("F").name, "One\ntwo");
}

TEST_F(FolderEditorControllerTest, ClearingTheIconRemovesIt) {
  MenuCategory withIcon = folderWith("F", 0);
  withIcon.iconSymbolName = "star";
  edit(withIcon);
  editor().iconField().type("  ");
  pressInSheet("Save");
  EXPECT_EQ(folder("F").iconSymbolName, std::nullopt);
}

TEST_F(FolderEditorControllerTest, ThePreviewFollowsTheIconField) {
  add();
  EXPECT_FALSE(editor().iconPreview().image());
  editor().iconField().type(" terminal ");
  EXPECT_EQ(editor().iconPreview().image()->name, "terminal");
  editor().iconField().type("no.such.symbol");
  EXPECT_FALSE(editor().iconPreview().image());
  editor().nameField().type("star");
  EXPECT_FALSE(editor().iconPreview().image());
}

TEST_F(FolderEditorControllerTest, TheIconFieldCompletesNamesOfSymbols) {
  add();
  sheet()->focus(&editor().iconField());
  editor().iconField().type("Fold");
  EXPECT_THAT(
      editor().iconField().completions(),
      ElementsAre(TextCompletion{.text = "folder", .image = memory.images.symbol("folder")}));
  editor().iconField().acceptCompletion(0);
  EXPECT_EQ(editor().iconField().text(), "folder");
  EXPECT_EQ(editor().iconPreview().image()->name, "folder");
}

TEST_F(FolderEditorControllerTest, CancelChangesNothing) {
  edit(folderWith("F", 0));
  editor().nameField().type("Other");
  EXPECT_TRUE(sheet()->key(pressOf(keys::escape)));
  EXPECT_THAT(sheet(), IsNull());
  EXPECT_EQ(folder("F").name, "Folder F");
  EXPECT_EQ(posts, 0);
}

TEST_F(FolderEditorControllerTest, TheCompletionRunsOnceAfterTheSheetHasLeftTheScreen) {
  open({folderWith("F", 0)});
  FolderEditorController sheetController(*settings, memory.windows, memory.images,
                                         folderWith("F", 0));
  std::vector<bool> results;
  const auto complete = [&](bool saved) {
    EXPECT_FALSE(sheetController.window().visible());
    results.push_back(saved);
  };
  ASSERT_TRUE(sheetController.present(controller->window(), complete));
  sheetController.savePressed();
  ASSERT_TRUE(sheetController.present(controller->window(), complete));
  sheetController.cancelPressed();
  EXPECT_THAT(results, ElementsAre(true, false));
}

class ItemEditorControllerTest : public SettingsWindowFixture {
 protected:
  ItemEditorController& editor() {
    return dynamic_cast<ItemEditorController&>(*controller->activeSheet());
  }

  void add() {
    open({folderWith("F", 0)});
    press("Add Item");
  }

  void edit(MenuItem item) {
    const std::string id = item.id;
    open({folderWith("F", 0, {std::move(item)})});
    select("F|" + id);
    press("Edit");
  }

  /// Saves the sheet and returns the item that it has added.
  MenuItem added() {
    pressInSheet("Add");
    return folder("F").items.at(0);
  }

  void chooseType(std::size_t index) { editor().typePopup().select(index); }
};

const KeyboardShortcut superK{.keyCode = 40, .character = "k", .modifiers = modifiers::command};

TEST_F(ItemEditorControllerTest, HasTheStatedContents) {
  add();
  EXPECT_EQ(sheet()->title(), "Add Item");
  EXPECT_EQ(sheet()->contentSize(), (Size{520, 200}));
  EXPECT_EQ(memory.windows.focused(*sheet()), &editor().titleField());
  EXPECT_THAT(
      windowOutline(*sheet()),
      ElementsAre(
          "column leading spacing 16 insets 20 20 20 20",
          "  form spacing 10 10 labels 90 width 480 then 0",  //
          "    label: Title:",                                //
          "    field placeholder Menu item title width 370 called Title",
          "    label: Icon:",  //
          "    row centred spacing 8 called Icon",
          "      field placeholder SF Symbol name, e.g. bolt.fill width 260 called Icon",
          "      image width 22 height 22 called Preview of the icon",
          "    label: Type:",                       //
          "    pop-up called Type: Shell Command",  //
          "    label: Command:",                    //
          "    text view 11 width 370 height 90 called Command",
          "    label 10 secondary wrapping: Use {{input}} anywhere in the command to be asked for "
          "a value when it runs.",
          "    label: Input label:",
          "    field placeholder Question shown when asking for {{input}} width 370 called Input "
          "label",
          "    label: Shortcut:",  //
          "    row centred spacing 10 called Shortcut",
          "      custom view width 180 height 24 called Keyboard shortcut: Click to record",
          "      checkbox on: Works system-wide",
          "    label 10 secondary wrapping: Click, then press keys. Delete clears it. System-wide "
          "shortcuts work even when the menu is closed.",
          "    label: Options:",  //
          "    column leading spacing 6 called Options",
          "      checkbox: Show notification with output",  //
          "      checkbox: Copy output to clipboard",       //
          "      checkbox: Ask before running",             //
          "      checkbox: Open in Terminal",               //
          "  space", "  row centred spacing 8 width 480",   //
          "    space",                                      //
          "    button escape: Cancel",                      //
          "    button return: Add"));
  EXPECT_THAT(editor().typePopup().titles(),
              ElementsAre("Shell Command", "Script File", "AppleScript"));
  EXPECT_TRUE(editor().commandView().font().monospaced);
}

TEST_F(ItemEditorControllerTest, ANewItemHasWhatTheSheetDescribes) {
  add();
  editor().titleField().type(" Deploy ");
  editor().iconField().type("bolt.fill");
  chooseType(1);
  editor().commandView().type("\n\n  ~/bin/deploy\n\n");
  editor().inputPromptField().type(" Which one? ");
  editor().recorder().mouseDown();
  sheet()->key({.keyCode = 40, .character = "k", .modifiers = modifiers::command});
  editor().clipboardCheckbox().toggle();
  editor().terminalCheckbox().toggle();
  const MenuItem item = added();
  MenuItem expected;
  expected.id = item.id;
  expected.title = "Deploy";
  expected.iconSymbolName = "bolt.fill";
  expected.command = {.type = CommandType::scriptFile,
                      .value = "~/bin/deploy",
                      .copyToClipboard = true,
                      .openInTerminal = true};
  expected.inputPrompt = "Which one?";
  expected.shortcut = superK;
  EXPECT_EQ(item, expected);
  EXPECT_EQ(item.id.size(), 36U);
  EXPECT_EQ(posts, 1);
}

TEST_F(ItemEditorControllerTest, TheOptionsAreStoredEachOnItsOwn) {
  add();
  editor().titleField().type("Item");
  editor().commandView().type("true");
  editor().notificationCheckbox().toggle();
  editor().confirmCheckbox().toggle();
  const MenuItem item = added();
  EXPECT_TRUE(item.command.showNotification);
  EXPECT_TRUE(item.confirmBeforeRunning);
  EXPECT_FALSE(item.command.copyToClipboard);
  EXPECT_FALSE(item.command.openInTerminal);
  EXPECT_EQ(item.iconSymbolName, std::nullopt);
  EXPECT_EQ(item.inputPrompt, std::nullopt);
  EXPECT_EQ(item.shortcut, std::nullopt);
}

TEST_F(ItemEditorControllerTest, ShowsTheItemThatIsEditedAndSavesItUnchanged) {
  MenuItem item = itemWith("I", "Item");
  item.command = {.type = CommandType::scriptFile,
                  .value = "/bin/true",
                  .showNotification = true,
                  .copyToClipboard = true,
                  .openInTerminal = true};
  item.iconSymbolName = "star";
  item.shortcut = superK;
  item.confirmBeforeRunning = true;
  item.inputPrompt = "What?";
  edit(item);
  EXPECT_EQ(sheet()->title(), "Edit Item");
  EXPECT_EQ(editor().saveButton().title(), "Save");
  EXPECT_EQ(editor().iconPreview().image()->name, "star");
  EXPECT_EQ(editor().typePopup().selectedTitle(), "Script File");
  pressInSheet("Save");
  EXPECT_EQ(this->item("I"), item);
  EXPECT_EQ(posts, 1);
}

TEST_F(ItemEditorControllerTest, LineBreaksInUneditedTextsAreKept) {
  MenuItem item = itemWith("I", "One\ntwo");
  item.inputPrompt = "What\nelse?";
  edit(item);
  editor().iconField().type("star");
  pressInSheet("Save");
  EXPECT_EQ(this->item("I").title, "One\ntwo");
  EXPECT_EQ(this->item("I").inputPrompt, "What\nelse?");
}

TEST_F(ItemEditorControllerTest, AnEditedItemKeepsItsIdentifierAndItsState) {
  MenuItem item = itemWith("I", "Item");
  item.isEnabled = false;
  edit(item);
  editor().titleField().type("Other");
  pressInSheet("Save");
  EXPECT_EQ(this->item("I").title, "Other");
  EXPECT_FALSE(this->item("I").isEnabled);
}

TEST_F(ItemEditorControllerTest, AnItemThatDidNotRunInTheBackgroundDoesAfterSaving) {
  MenuItem item = itemWith("I", "Item");
  item.command.runInBackground = false;
  edit(item);
  pressInSheet("Save");
  EXPECT_TRUE(this->item("I").command.runInBackground);
}

TEST_F(ItemEditorControllerTest, ATitleOfOnlySpacesIsRefused) {
  add();
  editor().titleField().type("   ");
  editor().commandView().type("true");
  sheet()->makeFirstResponder(&editor().iconField());
  pressInSheet("Add");
  EXPECT_EQ(memory.windows.focused(*sheet()), &editor().titleField());
  EXPECT_EQ(posts, 0);
}

TEST_F(ItemEditorControllerTest, ACommandOfOnlyBlankLinesIsRefusedEvenIfTheTitleIsFilled) {
  add();
  editor().titleField().type("Item");
  editor().commandView().type("\n  \n\t\n");
  pressInSheet("Add");
  ASSERT_THAT(sheet(), NotNull());
  EXPECT_EQ(memory.windows.focused(*sheet()), &editor().commandView());
  EXPECT_EQ(editor().commandView().text(), "\n  \n\t\n");
  EXPECT_EQ(posts, 0);
}

TEST_F(ItemEditorControllerTest, BlankLinesAroundACommandAreRemoved) {
  add();
  editor().titleField().type("Item");
  editor().commandView().type("\n\n  echo one\n\necho two  \n\n");
  EXPECT_EQ(added().command.value, "echo one\n\necho two");
}

TEST_F(ItemEditorControllerTest,
       AppleScriptUnticksAndDisablesOpenInTerminalAndShellCommandEnablesItAgainUnticked) {
  add();
  editor().terminalCheckbox().toggle();
  chooseType(2);
  EXPECT_EQ(editor().terminalCheckbox().state(), ControlState::off);
  EXPECT_FALSE(editor().terminalCheckbox().enabled());
  chooseType(0);
  EXPECT_EQ(editor().terminalCheckbox().state(), ControlState::off);
  EXPECT_TRUE(editor().terminalCheckbox().enabled());
  editor().terminalCheckbox().toggle();
  chooseType(1);
  EXPECT_EQ(editor().terminalCheckbox().state(), ControlState::on);
}

TEST_F(ItemEditorControllerTest, AnAppleScriptWithTheTerminalOptionIsShownWithoutIt) {
  MenuItem item = itemWith("I", "Item");
  item.command.type = CommandType::appleScript;
  item.command.openInTerminal = true;
  edit(item);
  EXPECT_FALSE(editor().terminalCheckbox().enabled());
  pressInSheet("Save");
  EXPECT_FALSE(this->item("I").command.openInTerminal);
}

TEST_F(ItemEditorControllerTest, WorksSystemWideIsTickedForANewItemAndUntickedForANonGlobalOne) {
  MenuItem item = itemWith("I", "Item");
  item.shortcut = superK;
  item.shortcut->isGlobal = false;
  edit(item);
  EXPECT_EQ(editor().globalCheckbox().state(), ControlState::off);
  pressInSheet("Save");
  EXPECT_FALSE(this->item("I").shortcut->isGlobal);
  press("Add Item");
  EXPECT_EQ(editor().globalCheckbox().state(), ControlState::on);
}

TEST_F(ItemEditorControllerTest, TheCheckboxDecidesWhetherTheShortcutIsGlobal) {
  MenuItem item = itemWith("I", "Item");
  item.shortcut = superK;
  edit(item);
  editor().globalCheckbox().toggle();
  pressInSheet("Save");
  EXPECT_FALSE(this->item("I").shortcut->isGlobal);
}

TEST_F(ItemEditorControllerTest, DeletingTheShortcutAndClearingTheTextsRemovesThem) {
  MenuItem item = itemWith("I", "Item");
  item.shortcut = superK;
  item.iconSymbolName = "star";
  item.inputPrompt = "What?";
  edit(item);
  editor().recorder().setShortcut(std::nullopt);
  editor().iconField().type("");
  editor().inputPromptField().type(" ");
  pressInSheet("Save");
  EXPECT_EQ(this->item("I"), itemWith("I", "Item"));
}

TEST_F(ItemEditorControllerTest, ThePreviewFollowsTheIconField) {
  add();
  editor().iconField().type(" terminal ");
  EXPECT_EQ(editor().iconPreview().image()->name, "terminal");
  editor().iconField().type(" ");
  EXPECT_FALSE(editor().iconPreview().image());
}

}  // namespace
}  // namespace quillmar
