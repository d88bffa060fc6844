// Conformance tests of window systems: outlines.

#pragma once

#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/outline_view.h"
#include "tests/conformance/widgets_fixture.h"

namespace quillmar {

/// Folders with items; rows of items are "folder|item".
class FolderRows final : public OutlineDataSource {
 public:
  struct Folder {
    std::string name;
    std::vector<std::string> items;
  };

  std::vector<Folder> folders;
  std::map<std::string, ControlState> states;
  int valuesAsked = 0;

  std::vector<OutlineChild> children(const std::string* row) override {
    std::vector<OutlineChild> rows;
    if (row == nullptr) {
      for (const Folder& folder : folders) rows.push_back({folder.name, true});
    } else if (const Folder* const folder = find(*row)) {
      for (const std::string& item : folder->items) rows.push_back({*row + "|" + item, false});
    }
    return rows;
  }
  OutlineRow value(const std::string& row) override {
    ++valuesAsked;
    const auto bar = row.find('|');
    if (bar == std::string::npos) return {.cells = {TextCell{.text = row}}};
    return {.cells = {CheckboxCell{.identifier = row, .state = states[row]}, SymbolCell{},
                      TextCell{.text = row.substr(bar + 1), .truncates = true},
                      TextCell{.text = "⌃A", .color = TextColor::secondaryLabel}}};
  }

 private:
  const Folder* find(const std::string& name) const {
    for (const Folder& folder : folders) {
      if (folder.name == name) return &folder;
    }
    return nullptr;
  }
};

template <class Harness>
class OutlineConformance : public WidgetsFixture<Harness> {
 protected:
  using Toggle = std::pair<std::string, ControlState>;

  OutlineConformance() {
    rows.folders = {{"Audio", {"Mute", "Play"}}, {"Empty", {}}, {"System", {"Lock", "Sleep"}}};
    outline = &this->stack->template add<OutlineView>(rows);
    outline->setWidth(280);
    outline->setHeight(400);
    outline->setOnDoubleClick([this] { ++doubleClicks; });
    outline->setOnToggle([this](const std::string& identifier, ControlState state) {
      toggles.emplace_back(identifier, state);
      rows.states[identifier] = state;
      outline->reload();
    });
    this->window->makeFirstResponder(outline);
  }

  void showExpanded() {
    this->show();
    for (const char* const folder : {"Audio", "Empty", "System"}) {
      outline->setExpanded(folder, true);
    }
    this->harness.settle();
  }
  std::vector<std::string> shown() { return this->harness.rowsOnScreen(*outline); }
  std::optional<std::size_t> selected() {
    const auto onScreen = this->harness.selectedRowOnScreen(*outline);
    EXPECT_EQ(onScreen, outline->selectedIndex());
    return onScreen;
  }
  void press(const KeyEquivalent& key) {
    this->harness.pressKey(*this->window, pressOf(key));
    this->harness.settle();
  }

  FolderRows rows;
  OutlineView* outline;
  int doubleClicks = 0;
  std::vector<Toggle> toggles;
};

TYPED_TEST_SUITE_P(OutlineConformance);

// Rows.

TYPED_TEST_P(OutlineConformance, RowsShowTheirTextsAndCollapsedOnesHideTheirChildren) {
  this->show();
  EXPECT_THAT(this->shown(), testing::ElementsAre("Audio", "Empty", "System"));
  this->outline->setExpanded("Audio", true);
  this->outline->setExpanded("System", true);
  this->outline->setExpanded("System", false);
  this->harness.settle();
  EXPECT_THAT(this->shown(),
              testing::ElementsAre("Audio", "  Mute, ⌃A", "  Play, ⌃A", "Empty", "System"));
}

TYPED_TEST_P(OutlineConformance, TheUserExpandsAndCollapsesRows) {
  this->show();
  this->harness.clickDisclosure(*this->outline, 2);
  this->harness.settle();
  EXPECT_TRUE(this->outline->isExpanded(2));
  EXPECT_THAT(this->shown(),
              testing::ElementsAre("Audio", "Empty", "System", "  Lock, ⌃A", "  Sleep, ⌃A"));
  this->harness.clickDisclosure(*this->outline, 2);
  this->harness.settle();
  EXPECT_FALSE(this->outline->isExpanded(2));
  EXPECT_THAT(this->shown(), testing::ElementsAre("Audio", "Empty", "System"));
}

TYPED_TEST_P(OutlineConformance, AReloadShowsOtherRowsAndKeepsTheSelectionAndTheExpansion) {
  this->showExpanded();
  this->outline->setSelectedIndex(5);
  this->rows.folders = {{"New", {"First"}}, {"System", {"Halt", "Lock"}}, {"Audio", {}}};
  this->outline->setExpanded("Audio", false);
  this->outline->reload();
  this->harness.settle();
  EXPECT_THAT(this->shown(),
              testing::ElementsAre("New", "System", "  Halt, ⌃A", "  Lock, ⌃A", "Audio"));
  EXPECT_FALSE(this->outline->isExpanded(4));
  ASSERT_NE(this->outline->selectedRow(), nullptr);
  EXPECT_EQ(*this->outline->selectedRow(), "System|Lock");
  EXPECT_EQ(this->selected(), 3U);
}

TYPED_TEST_P(OutlineConformance, ARowThatIsGoneAfterAReloadIsNotSelected) {
  this->showExpanded();
  this->outline->setSelectedIndex(1);
  this->rows.folders[0].items.erase(this->rows.folders[0].items.begin());
  this->outline->reload();
  this->harness.settle();
  EXPECT_EQ(this->selected(), std::nullopt);
}

TYPED_TEST_P(OutlineConformance, AReloadShowsOtherValues) {
  this->showExpanded();
  this->rows.states["Audio|Mute"] = ControlState::on;
  this->outline->reload();
  this->harness.settle();
  EXPECT_EQ(this->harness.rowStateOnScreen(*this->outline, 1), ControlState::on);
  EXPECT_EQ(this->harness.rowStateOnScreen(*this->outline, 2), ControlState::off);
}

TYPED_TEST_P(OutlineConformance, OnlyRowsInSightAreAskedForTheirValues) {
  for (int i = 0; i < 10000; ++i) {
    this->rows.folders[0].items.push_back("Item " + std::to_string(i));
  }
  this->showExpanded();
  this->outline->reload();
  this->rows.folders[0].items.pop_back();
  this->outline->reload();
  this->harness.settle();
  EXPECT_LT(this->rows.valuesAsked, 500);
}

TYPED_TEST_P(OutlineConformance, AnOutlineWithoutRowsTakesKeysAndClicks) {
  this->rows.folders.clear();
  this->outline->reload();
  this->show();
  for (const KeyEquivalent& key : {keys::down, keys::end, keys::space, keys::left}) {
    this->press(key);
  }
  this->harness.click(*this->outline);
  EXPECT_EQ(this->selected(), std::nullopt);
}

// Selecting.

TYPED_TEST_P(OutlineConformance, AClickSelectsARow) {
  this->showExpanded();
  EXPECT_EQ(this->selected(), std::nullopt);
  this->harness.clickRow(*this->outline, 2);
  EXPECT_EQ(this->selected(), 2U);
  EXPECT_EQ(*this->outline->selectedRow(), "Audio|Play");
  this->harness.clickRow(*this->outline, 0);
  EXPECT_EQ(this->selected(), 0U);
}

TYPED_TEST_P(OutlineConformance, TheProgramSelectsARow) {
  this->showExpanded();
  this->outline->setSelectedIndex(4);
  this->harness.settle();
  EXPECT_EQ(this->selected(), 4U);
  this->outline->setSelectedIndex(7);
  EXPECT_EQ(this->selected(), 4U);
  this->outline->setSelectedIndex(std::nullopt);
  this->harness.settle();
  EXPECT_EQ(this->selected(), std::nullopt);
}

TYPED_TEST_P(OutlineConformance, ADoubleClickIsReportedOnceWithItsRowSelected) {
  this->showExpanded();
  this->outline->setOnDoubleClick([this] {
    ++this->doubleClicks;
    EXPECT_EQ(*this->outline->selectedRow(), "System");
  });
  this->harness.doubleClickRow(*this->outline, 4);
  this->harness.settle();
  EXPECT_EQ(this->doubleClicks, 1);
  EXPECT_TRUE(this->outline->isExpanded(4));
}

TYPED_TEST_P(OutlineConformance, ADisabledOutlineKeepsItsSelection) {
  this->showExpanded();
  this->outline->setSelectedIndex(1);
  this->outline->setEnabled(false);
  this->harness.settle();
  this->harness.clickRow(*this->outline, 2);
  this->harness.clickDisclosure(*this->outline, 0);
  this->press(keys::down);
  EXPECT_EQ(this->selected(), 1U);
  EXPECT_TRUE(this->outline->isExpanded(0));
}

TYPED_TEST_P(OutlineConformance, ADoubleClickMayDestroyItsOwnWindow) {
  this->showExpanded();
  this->outline->setOnDoubleClick([this] { this->window.reset(); });
  this->harness.doubleClickRow(*this->outline, 2);
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
}

// Checkboxes.

TYPED_TEST_P(OutlineConformance, AClickOnACheckboxTogglesItAndSelectsNothing) {
  this->showExpanded();
  this->harness.clickCheckbox(*this->outline, 1);
  this->harness.settle();
  EXPECT_EQ(this->harness.rowStateOnScreen(*this->outline, 1), ControlState::on);
  EXPECT_EQ(this->selected(), std::nullopt);
  this->harness.clickCheckbox(*this->outline, 1);
  EXPECT_THAT(this->toggles, testing::ElementsAre(testing::Pair("Audio|Mute", ControlState::on),
                                                  testing::Pair("Audio|Mute", ControlState::off)));
}

TYPED_TEST_P(OutlineConformance, SpaceTogglesTheCheckboxOfTheSelectedRow) {
  this->showExpanded();
  this->outline->setSelectedIndex(0);
  this->press(keys::space);
  EXPECT_THAT(this->toggles, testing::IsEmpty());
  this->outline->setSelectedIndex(2);
  this->press(keys::space);
  EXPECT_THAT(this->toggles, testing::ElementsAre(testing::Pair("Audio|Play", ControlState::on)));
}

TYPED_TEST_P(OutlineConformance, AToggleMayRemoveItsOwnRow) {
  this->showExpanded();
  this->outline->setOnToggle([this](const std::string&, ControlState) {
    this->rows.folders[0].items.clear();
    this->outline->reload();
  });
  this->harness.clickCheckbox(*this->outline, 1);
  this->harness.settle();
  EXPECT_EQ(this->shown().size(), 5U);
}

TYPED_TEST_P(OutlineConformance, AToggleMayDestroyItsOwnWindow) {
  this->showExpanded();
  this->outline->setOnToggle([this](const std::string&, ControlState) { this->window.reset(); });
  this->harness.clickCheckbox(*this->outline, 1);
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
}

// Keys.

TYPED_TEST_P(OutlineConformance, KeysMoveTheSelection) {
  this->showExpanded();
  std::vector<std::size_t> selections;
  for (const KeyEquivalent& key : {keys::down, keys::down, keys::up, keys::up, keys::end,
                                   keys::down, keys::home, keys::pageDown, keys::pageUp}) {
    this->press(key);
    selections.push_back(this->selected().value_or(99));
  }
  EXPECT_THAT(selections, testing::ElementsAre(0, 1, 0, 0, 6, 6, 0, 6, 0));
}

TYPED_TEST_P(OutlineConformance, UpWithoutASelectionSelectsTheLastRow) {
  this->showExpanded();
  this->press(keys::up);
  EXPECT_EQ(this->selected(), 6U);
}

TYPED_TEST_P(OutlineConformance, RightExpandsAndEntersAndLeftLeavesAndCollapses) {
  this->show();
  this->outline->setSelectedIndex(2);
  this->press(keys::right);
  EXPECT_TRUE(this->outline->isExpanded(2));
  EXPECT_EQ(this->selected(), 2U);
  this->press(keys::right);
  EXPECT_EQ(this->selected(), 3U);
  this->press(keys::right);
  EXPECT_EQ(this->selected(), 3U);
  this->press(keys::left);
  EXPECT_EQ(this->selected(), 2U);
  this->press(keys::left);
  EXPECT_THAT(this->shown(), testing::ElementsAre("Audio", "Empty", "System"));
  this->press(keys::left);
  EXPECT_EQ(this->selected(), 2U);
}

TYPED_TEST_P(OutlineConformance, TheParentOfASelectedRowIsSelectedWhenItCollapses) {
  this->showExpanded();
  this->outline->setSelectedIndex(5);
  this->harness.clickDisclosure(*this->outline, 4);
  this->harness.settle();
  EXPECT_EQ(this->selected(), 4U);
}

TYPED_TEST_P(OutlineConformance, TypingTheBeginningOfATextSelectsItsRow) {
  this->showExpanded();
  for (const char* const character : {"s", "l", "e"}) {
    this->press({.character = character, .modifierMask = 0});
  }
  EXPECT_EQ(*this->outline->selectedRow(), "System|Sleep");
  EXPECT_EQ(this->selected(), 6U);
}

TYPED_TEST_P(OutlineConformance, ReturnAndTabAreLeftToTheWindow) {
  Button& close = this->addButton("Close");
  close.setKeyEquivalent(keys::returnKey);
  this->showExpanded();
  this->outline->setSelectedIndex(1);
  this->press(keys::returnKey);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Close"));
  this->press(keys::tab);
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &close);
}

REGISTER_TYPED_TEST_SUITE_P(
    OutlineConformance, RowsShowTheirTextsAndCollapsedOnesHideTheirChildren,
    TheUserExpandsAndCollapsesRows, AReloadShowsOtherRowsAndKeepsTheSelectionAndTheExpansion,
    ARowThatIsGoneAfterAReloadIsNotSelected, AReloadShowsOtherValues,
    OnlyRowsInSightAreAskedForTheirValues, AnOutlineWithoutRowsTakesKeysAndClicks,
    AClickSelectsARow, TheProgramSelectsARow, ADoubleClickIsReportedOnceWithItsRowSelected,
    ADisabledOutlineKeepsItsSelection, ADoubleClickMayDestroyItsOwnWindow,
    AClickOnACheckboxTogglesItAndSelectsNothing, SpaceTogglesTheCheckboxOfTheSelectedRow,
    AToggleMayRemoveItsOwnRow, AToggleMayDestroyItsOwnWindow, KeysMoveTheSelection,
    UpWithoutASelectionSelectsTheLastRow, RightExpandsAndEntersAndLeftLeavesAndCollapses,
    TheParentOfASelectedRowIsSelectedWhenItCollapses, TypingTheBeginningOfATextSelectsItsRow,
    ReturnAndTabAreLeftToTheWindow);

}  // namespace quillmar
