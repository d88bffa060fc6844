// Conformance tests of window systems: keys and the focus.

#pragma once

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/key_equivalent.h"
#include "platform/widgets/button.h"
#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "tests/conformance/widgets_fixture.h"

namespace quillmar {

template <class Harness>
class WidgetKeyboardConformance : public WidgetsFixture<Harness> {};

TYPED_TEST_SUITE_P(WidgetKeyboardConformance);

// Keys.

TYPED_TEST_P(WidgetKeyboardConformance, ReturnPressesTheDefaultButtonFromAField) {
  const TextField& field = this->addField("");
  this->addButton("Cancel").setKeyEquivalent(keys::escape);
  Button& run = this->addButton("Run");
  run.setKeyEquivalent(keys::returnKey);
  this->show();
  EXPECT_TRUE(this->harness.isDefaultOnScreen(run));
  this->harness.click(field);
  this->harness.pressKey(*this->window, pressOf(keys::returnKey));
  EXPECT_THAT(this->pressed, testing::ElementsAre("Run"));
  this->harness.pressKey(*this->window, pressOf(keys::escape));
  EXPECT_THAT(this->pressed, testing::ElementsAre("Run", "Cancel"));
}

TYPED_TEST_P(WidgetKeyboardConformance, ReturnDoesNothingToADisabledDefaultButton) {
  const TextField& field = this->addField("");
  Button& run = this->addButton("Run");
  run.setKeyEquivalent(keys::returnKey);
  run.setEnabled(false);
  this->show();
  this->harness.click(field);
  this->harness.pressKey(*this->window, pressOf(keys::returnKey));
  EXPECT_THAT(this->pressed, testing::IsEmpty());
}

TYPED_TEST_P(WidgetKeyboardConformance, ReturnAndSpacePressTheFocusedButtonAndNotTheDefaultOne) {
  this->addButton("Run").setKeyEquivalent(keys::returnKey);
  Button& other = this->addButton("Other");
  this->window->makeFirstResponder(&other);
  this->show();
  EXPECT_FALSE(this->harness.isDefaultOnScreen(other));
  this->harness.pressKey(*this->window, pressOf(keys::returnKey));
  EXPECT_THAT(this->pressed, testing::ElementsAre("Other"));
  this->harness.pressKey(*this->window, pressOf(keys::space));
  EXPECT_THAT(this->pressed, testing::ElementsAre("Other", "Other"));
}

TYPED_TEST_P(WidgetKeyboardConformance, AnotherKeyPressesTheButtonThatNamesIt) {
  const TextField& field = this->addField("");
  Button& button = this->addButton("Find");
  button.setKeyEquivalent(KeyEquivalent{.character = "f", .modifierMask = modifiers::control});
  this->show();
  this->harness.click(field);
  this->harness.pressKey(*this->window, pressOf(*button.keyEquivalent()));
  EXPECT_THAT(this->pressed, testing::ElementsAre("Find"));
  this->harness.pressKey(*this->window,
                         pressOf({.character = "g", .modifierMask = modifiers::control}));
  EXPECT_THAT(this->pressed, testing::SizeIs(1));
}

// The focus.

TYPED_TEST_P(WidgetKeyboardConformance, TheFirstResponderHasTheFocusAndTakesWhatIsTyped) {
  const TextField& first = this->addField("");
  TextField& second = this->addField("");
  this->window->makeFirstResponder(&second);
  this->show();
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &second);
  this->harness.typeAtFocus(*this->window, "x");
  EXPECT_EQ(first.text(), "");
  EXPECT_EQ(second.text(), "x");
}

TYPED_TEST_P(WidgetKeyboardConformance, TheProgramMovesTheFocus) {
  TextField& field = this->addField("");
  this->show();
  this->window->makeFirstResponder(&field);
  this->harness.settle();
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &field);
  this->window->makeFirstResponder(nullptr);
  this->harness.settle();
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), nullptr);
  this->harness.typeAtFocus(*this->window, "x");
  EXPECT_EQ(field.text(), "");
}

TYPED_TEST_P(WidgetKeyboardConformance, WithoutAFirstResponderTheDefaultButtonHasTheFocus) {
  this->addField("");
  Button& run = this->addButton("Run");
  run.setKeyEquivalent(keys::returnKey);
  this->show();
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &run);
  EXPECT_EQ(this->window->firstResponder(), &run);
}

TYPED_TEST_P(WidgetKeyboardConformance, WithoutADefaultButtonNothingHasTheFocus) {
  this->addField("");
  this->show();
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), nullptr);
  EXPECT_EQ(this->window->firstResponder(), nullptr);
}

TYPED_TEST_P(WidgetKeyboardConformance, AClickIntoAFieldMakesItTheFirstResponder) {
  TextField& first = this->addField("");
  const TextField& second = this->addField("");
  this->window->makeFirstResponder(&first);
  this->show();
  this->harness.click(second);
  EXPECT_EQ(this->window->firstResponder(), &second);
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &second);
}

TYPED_TEST_P(WidgetKeyboardConformance, TabGoesThroughWhatTakesInputAndRound) {
  TextField& field = this->addField("");
  this->stack->template add<Label>("no stop").setSelectable(true);
  this->addButton("disabled").setEnabled(false);
  this->addButton("hidden").setHidden(true);
  StackView& row = this->stack->template add<StackView>(Orientation::horizontal);
  row.template add<FlexibleSpace>();
  Button& button = row.template add<Button>("Button");
  Button& link = this->stack->template add<Button>("Link", ButtonStyle::link);
  this->window->makeFirstResponder(&field);
  this->show();

  std::vector<const View*> stops;
  for (int i = 0; i < 4; ++i) {
    this->harness.pressKey(*this->window, pressOf(keys::tab));
    stops.push_back(this->harness.focusedOnScreen(*this->window));
    EXPECT_EQ(this->window->firstResponder(), stops.back());
  }
  EXPECT_THAT(stops, testing::ElementsAre(&button, &link, &field, &button));
  stops.clear();
  for (int i = 0; i < 3; ++i) {
    this->harness.pressKey(*this->window, pressOf(keys::backTab));
    stops.push_back(this->harness.focusedOnScreen(*this->window));
  }
  EXPECT_THAT(stops, testing::ElementsAre(&field, &link, &button));
}

TYPED_TEST_P(WidgetKeyboardConformance, AFirstResponderHasNoFocusWhileItIsDisabled) {
  TextField& field = this->addField("");
  this->addButton("Other");
  this->window->makeFirstResponder(&field);
  this->show();
  field.setEnabled(false);
  this->harness.settle();
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), nullptr);
  this->harness.typeAtFocus(*this->window, "x");
  field.setEnabled(true);
  this->harness.settle();
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &field);
  this->harness.typeAtFocus(*this->window, "y");
  EXPECT_EQ(field.text(), "y");
}

TYPED_TEST_P(WidgetKeyboardConformance, AFirstResponderThatIsRemovedLeavesNone) {
  TextField& field = this->addField("");
  this->addField("");
  this->window->makeFirstResponder(&field);
  this->show();
  this->stack->remove(field);
  this->harness.settle();
  EXPECT_EQ(this->window->firstResponder(), nullptr);
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), nullptr);
}

REGISTER_TYPED_TEST_SUITE_P(
    WidgetKeyboardConformance, ReturnPressesTheDefaultButtonFromAField,
    ReturnDoesNothingToADisabledDefaultButton,
    ReturnAndSpacePressTheFocusedButtonAndNotTheDefaultOne, AnotherKeyPressesTheButtonThatNamesIt,
    TheFirstResponderHasTheFocusAndTakesWhatIsTyped, TheProgramMovesTheFocus,
    WithoutAFirstResponderTheDefaultButtonHasTheFocus, WithoutADefaultButtonNothingHasTheFocus,
    AClickIntoAFieldMakesItTheFirstResponder, TabGoesThroughWhatTakesInputAndRound,
    AFirstResponderHasNoFocusWhileItIsDisabled, AFirstResponderThatIsRemovedLeavesNone);

}  // namespace quillmar
