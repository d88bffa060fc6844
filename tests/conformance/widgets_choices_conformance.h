// Conformance tests of window systems: checkboxes and pop-up buttons.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/checkbox.h"
#include "platform/widgets/pop_up_button.h"
#include "tests/conformance/widgets_fixture.h"

namespace quillmar {

template <class Harness>
class WidgetChoicesConformance : public WidgetsFixture<Harness> {
 protected:
  Checkbox& addCheckbox(const std::string& title) {
    Checkbox& checkbox = this->stack->template add<Checkbox>(title);
    checkbox.setOnToggle([this](ControlState state) { states.push_back(state); });
    return checkbox;
  }
  PopUpButton& addPopUp() {
    PopUpButton& popUp = this->stack->template add<PopUpButton>(
        std::vector<std::string>{"Shell Command", "Script File", "AppleScript"});
    popUp.setOnSelect([this](std::size_t index) { selections.push_back(index); });
    return popUp;
  }

  std::vector<ControlState> states;
  std::vector<std::size_t> selections;
};

TYPED_TEST_SUITE_P(WidgetChoicesConformance);

// Checkboxes.

TYPED_TEST_P(WidgetChoicesConformance, AClickTogglesACheckbox) {
  const Checkbox& checkbox = this->addCheckbox("Ask & wait");
  this->show();
  EXPECT_EQ(this->harness.textOnScreen(checkbox), "Ask & wait");
  EXPECT_EQ(this->harness.nameForScreenReaders(checkbox), "Ask & wait");
  this->harness.click(checkbox);
  EXPECT_EQ(checkbox.state(), ControlState::on);
  EXPECT_EQ(this->harness.stateOnScreen(checkbox), ControlState::on);
  this->harness.click(checkbox);
  EXPECT_EQ(this->harness.stateOnScreen(checkbox), ControlState::off);
  EXPECT_THAT(this->states, testing::ElementsAre(ControlState::on, ControlState::off));
}

TYPED_TEST_P(WidgetChoicesConformance, SpaceTogglesTheFocusedCheckboxAndReturnDoesNot) {
  Checkbox& checkbox = this->addCheckbox("Ask");
  this->addButton("Run").setKeyEquivalent(keys::returnKey);
  this->window->makeFirstResponder(&checkbox);
  this->show();
  this->harness.pressKey(*this->window, pressOf(keys::space));
  EXPECT_EQ(this->harness.stateOnScreen(checkbox), ControlState::on);
  this->harness.pressKey(*this->window, pressOf(keys::returnKey));
  EXPECT_THAT(this->states, testing::ElementsAre(ControlState::on));
  EXPECT_THAT(this->pressed, testing::ElementsAre("Run"));
}

TYPED_TEST_P(WidgetChoicesConformance, AToggledMixedCheckboxIsOn) {
  Checkbox& checkbox = this->addCheckbox("Some");
  checkbox.setState(ControlState::mixed);
  this->show();
  EXPECT_EQ(this->harness.stateOnScreen(checkbox), ControlState::mixed);
  this->harness.click(checkbox);
  EXPECT_EQ(this->harness.stateOnScreen(checkbox), ControlState::on);
}

TYPED_TEST_P(WidgetChoicesConformance, AStateThatTheProgramSetsIsShownAndCallsNoHandler) {
  Checkbox& checkbox = this->addCheckbox("Ask");
  this->show();
  checkbox.setState(ControlState::on);
  this->harness.settle();
  EXPECT_EQ(this->harness.stateOnScreen(checkbox), ControlState::on);
  EXPECT_THAT(this->states, testing::IsEmpty());
}

TYPED_TEST_P(WidgetChoicesConformance, AHandlerMayPutACheckboxBack) {
  Checkbox& checkbox = this->addCheckbox("Launch at login");
  checkbox.setOnToggle([&](ControlState) { checkbox.setState(ControlState::off); });
  this->show();
  this->harness.click(checkbox);
  this->harness.settle();
  EXPECT_EQ(this->harness.stateOnScreen(checkbox), ControlState::off);
}

TYPED_TEST_P(WidgetChoicesConformance, ADisabledCheckboxKeepsItsState) {
  Checkbox& checkbox = this->addCheckbox("Ask");
  checkbox.setEnabled(false);
  this->show();
  EXPECT_FALSE(this->harness.isEnabledOnScreen(checkbox));
  this->harness.click(checkbox);
  EXPECT_EQ(this->harness.stateOnScreen(checkbox), ControlState::off);
  EXPECT_THAT(this->states, testing::IsEmpty());
}

TYPED_TEST_P(WidgetChoicesConformance, AToggleMayDestroyItsOwnWindow) {
  Checkbox& checkbox = this->addCheckbox("Ask");
  checkbox.setOnToggle([this](ControlState) { this->window.reset(); });
  this->show();
  this->harness.click(checkbox);
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
}

// Pop-up buttons.

TYPED_TEST_P(WidgetChoicesConformance, APopUpButtonShowsTheTitleThatTheUserChooses) {
  const PopUpButton& popUp = this->addPopUp();
  this->show();
  EXPECT_EQ(this->harness.textOnScreen(popUp), "Shell Command");
  this->harness.choose(popUp, 2);
  this->harness.settle();
  EXPECT_EQ(popUp.selectedIndex(), 2U);
  EXPECT_EQ(popUp.selectedTitle(), "AppleScript");
  EXPECT_EQ(this->harness.textOnScreen(popUp), "AppleScript");
  EXPECT_THAT(this->selections, testing::ElementsAre(2));
}

TYPED_TEST_P(WidgetChoicesConformance, KeysSelectTitles) {
  PopUpButton& popUp = this->addPopUp();
  this->window->makeFirstResponder(&popUp);
  this->show();
  for (const KeyEquivalent& key : {keys::down, keys::end, keys::down, keys::up, keys::home}) {
    this->harness.pressKey(*this->window, pressOf(key));
  }
  EXPECT_THAT(this->selections, testing::ElementsAre(1, 2, 1, 0));
  EXPECT_EQ(this->harness.textOnScreen(popUp), "Shell Command");
}

TYPED_TEST_P(WidgetChoicesConformance, TypingTheBeginningOfATitleSelectsIt) {
  PopUpButton& popUp = this->addPopUp();
  this->window->makeFirstResponder(&popUp);
  this->show();
  for (const char* const character : {"s", "c", "r"}) {
    this->harness.pressKey(*this->window, pressOf({.character = character, .modifierMask = 0}));
  }
  EXPECT_EQ(this->harness.textOnScreen(popUp), "Script File");
  EXPECT_THAT(this->selections, testing::ElementsAre(1));
}

TYPED_TEST_P(WidgetChoicesConformance, ReturnOnAPopUpButtonPressesTheDefaultButton) {
  PopUpButton& popUp = this->addPopUp();
  this->addButton("Save").setKeyEquivalent(keys::returnKey);
  this->window->makeFirstResponder(&popUp);
  this->show();
  this->harness.pressKey(*this->window, pressOf(keys::returnKey));
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save"));
}

TYPED_TEST_P(WidgetChoicesConformance, ATitleThatTheProgramSelectsIsShownAndCallsNoHandler) {
  PopUpButton& popUp = this->addPopUp();
  this->show();
  popUp.setSelectedIndex(1);
  this->harness.settle();
  EXPECT_EQ(this->harness.textOnScreen(popUp), "Script File");
  popUp.setSelectedIndex(3);
  EXPECT_EQ(popUp.selectedIndex(), 1U);
  popUp.setSelectedIndex(std::nullopt);
  this->harness.settle();
  EXPECT_EQ(this->harness.textOnScreen(popUp), "");
  EXPECT_THAT(this->selections, testing::IsEmpty());
}

TYPED_TEST_P(WidgetChoicesConformance, AHandlerMaySelectAnotherTitle) {
  PopUpButton& popUp = this->addPopUp();
  popUp.setOnSelect([&](std::size_t) { popUp.setSelectedIndex(0); });
  this->show();
  this->harness.choose(popUp, 2);
  this->harness.settle();
  EXPECT_EQ(this->harness.textOnScreen(popUp), "Shell Command");
}

TYPED_TEST_P(WidgetChoicesConformance, ADisabledPopUpButtonKeepsItsTitle) {
  PopUpButton& popUp = this->addPopUp();
  popUp.setEnabled(false);
  this->show();
  EXPECT_FALSE(this->harness.isEnabledOnScreen(popUp));
  this->harness.choose(popUp, 2);
  EXPECT_EQ(this->harness.textOnScreen(popUp), "Shell Command");
  EXPECT_THAT(this->selections, testing::IsEmpty());
}

TYPED_TEST_P(WidgetChoicesConformance, ASelectionMayDestroyItsOwnWindow) {
  PopUpButton& popUp = this->addPopUp();
  popUp.setOnSelect([this](std::size_t) { this->window.reset(); });
  this->show();
  this->harness.choose(popUp, 2);
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
}

TYPED_TEST_P(WidgetChoicesConformance, AScreenReaderSaysTheLabelOfAPopUpButton) {
  PopUpButton& popUp = this->addPopUp();
  popUp.setAccessibilityLabel("Type");
  this->show();
  EXPECT_EQ(this->harness.nameForScreenReaders(popUp), "Type");
}

REGISTER_TYPED_TEST_SUITE_P(
    WidgetChoicesConformance, AClickTogglesACheckbox,
    SpaceTogglesTheFocusedCheckboxAndReturnDoesNot, AToggledMixedCheckboxIsOn,
    AStateThatTheProgramSetsIsShownAndCallsNoHandler, AHandlerMayPutACheckboxBack,
    ADisabledCheckboxKeepsItsState, AToggleMayDestroyItsOwnWindow,
    APopUpButtonShowsTheTitleThatTheUserChooses, KeysSelectTitles,
    TypingTheBeginningOfATitleSelectsIt, ReturnOnAPopUpButtonPressesTheDefaultButton,
    ATitleThatTheProgramSelectsIsShownAndCallsNoHandler, AHandlerMaySelectAnotherTitle,
    ADisabledPopUpButtonKeepsItsTitle, ASelectionMayDestroyItsOwnWindow,
    AScreenReaderSaysTheLabelOfAPopUpButton);

}  // namespace quillmar
