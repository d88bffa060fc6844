// Conformance tests of window systems: tab views.

#pragma once

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/tab_view.h"
#include "tests/conformance/widgets_fixture.h"

namespace quillmar {

template <class Harness>
class TabViewConformance : public WidgetsFixture<Harness> {
 protected:
  TabViewConformance() : tabs(this->stack->template add<TabView>()) {
    field = &tabs.template addTab<TextField>("menu", "Menu & Items");
    general = &tabs.template addTab<Button>("general", "General…", "Press");
    tabs.setOnSelect([this](std::size_t index) { selections.push_back(index); });
  }

  void press(const KeyEquivalent& key) {
    this->harness.pressKey(*this->window, pressOf(key));
    this->harness.settle();
  }

  TabView& tabs;
  TextField* field;
  Button* general;
  std::vector<std::size_t> selections;
};

TYPED_TEST_SUITE_P(TabViewConformance);

TYPED_TEST_P(TabViewConformance, AClickOnATabShowsItsContent) {
  this->show();
  EXPECT_THAT(this->harness.tabsOnScreen(this->tabs),
              testing::ElementsAre("[Menu & Items]", "General…"));
  EXPECT_TRUE(this->harness.isShown(*this->field));
  EXPECT_FALSE(this->harness.isShown(*this->general));
  this->harness.clickTab(this->tabs, 1);
  this->harness.settle();
  EXPECT_THAT(this->harness.tabsOnScreen(this->tabs),
              testing::ElementsAre("Menu & Items", "[General…]"));
  EXPECT_FALSE(this->harness.isShown(*this->field));
  EXPECT_TRUE(this->harness.isShown(*this->general));
  EXPECT_THAT(this->selections, testing::ElementsAre(1));
}

TYPED_TEST_P(TabViewConformance, ATabThatTheProgramSelectsIsShownAndCallsNoHandler) {
  this->show();
  this->tabs.setSelectedIndex(1);
  this->tabs.setSelectedIndex(2);
  this->harness.settle();
  EXPECT_THAT(this->harness.tabsOnScreen(this->tabs),
              testing::ElementsAre("Menu & Items", "[General…]"));
  EXPECT_THAT(this->selections, testing::IsEmpty());
}

TYPED_TEST_P(TabViewConformance, KeysOnTheRowOfTabsSelectATab) {
  this->window->makeFirstResponder(&this->tabs);
  this->show();
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &this->tabs);
  for (const KeyEquivalent& key : {keys::right, keys::right, keys::left, keys::end, keys::home}) {
    this->press(key);
  }
  EXPECT_THAT(this->selections, testing::ElementsAre(1, 0, 1, 0));
}

TYPED_TEST_P(TabViewConformance, ControlWithPageUpAndPageDownSelectsATabFromAnywhere) {
  this->window->makeFirstResponder(this->field);
  this->show();
  this->press({.character = keys::pageDown.character, .modifierMask = modifiers::control});
  EXPECT_TRUE(this->harness.isShown(*this->general));
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &this->tabs);
  this->press({.character = keys::pageDown.character, .modifierMask = modifiers::control});
  this->press({.character = keys::pageUp.character, .modifierMask = modifiers::control});
  EXPECT_THAT(this->selections, testing::ElementsAre(1, 0, 1));
}

TYPED_TEST_P(TabViewConformance, TabStopsAtTheRowOfTabsAndInTheShownContentOnly) {
  this->window->makeFirstResponder(&this->tabs);
  this->show();
  this->press(keys::tab);
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), this->field);
  this->press(keys::tab);
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &this->tabs);
  this->harness.typeAtFocus(*this->window, "x");
  EXPECT_EQ(this->field->text(), "");
}

TYPED_TEST_P(TabViewConformance, ASelectionMayDestroyItsOwnWindow) {
  this->tabs.setOnSelect([this](std::size_t) { this->window.reset(); });
  this->show();
  this->harness.clickTab(this->tabs, 1);
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
}

REGISTER_TYPED_TEST_SUITE_P(TabViewConformance, AClickOnATabShowsItsContent,
                            ATabThatTheProgramSelectsIsShownAndCallsNoHandler,
                            KeysOnTheRowOfTabsSelectATab,
                            ControlWithPageUpAndPageDownSelectsATabFromAnywhere,
                            TabStopsAtTheRowOfTabsAndInTheShownContentOnly,
                            ASelectionMayDestroyItsOwnWindow);

}  // namespace quillmar
