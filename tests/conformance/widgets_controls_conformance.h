// Conformance tests of window systems: labels, buttons, fields and other single views.

#pragma once

#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/button.h"
#include "platform/widgets/label.h"
#include "platform/widgets/scroll_view.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "tests/conformance/widgets_fixture.h"

namespace quillmar {

template <class Harness>
class WidgetControlsConformance : public WidgetsFixture<Harness> {};

TYPED_TEST_SUITE_P(WidgetControlsConformance);

// Buttons.

TYPED_TEST_P(WidgetControlsConformance, AClickOnAButtonIsHeardOnce) {
  const Button& button = this->addButton("Save");
  this->show();
  EXPECT_EQ(this->harness.textOnScreen(button), "Save");
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save"));
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save", "Save"));
}

TYPED_TEST_P(WidgetControlsConformance, AClickOnALinkIsHeardOnce) {
  Button& link = this->stack->template add<Button>("example.org", ButtonStyle::link);
  int presses = 0;
  link.setOnPress([&] { ++presses; });
  this->show();
  EXPECT_EQ(this->harness.textOnScreen(link), "example.org");
  this->harness.click(link);
  EXPECT_EQ(presses, 1);
}

TYPED_TEST_P(WidgetControlsConformance, ADisabledButtonIsGreyAndItsPressDoesNothing) {
  Button& button = this->addButton("Save");
  this->show();
  EXPECT_TRUE(this->harness.isEnabledOnScreen(button));
  button.setEnabled(false);
  this->harness.settle();
  EXPECT_FALSE(this->harness.isEnabledOnScreen(button));
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::IsEmpty());

  button.setEnabled(true);
  this->harness.settle();
  EXPECT_TRUE(this->harness.isEnabledOnScreen(button));
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save"));
}

TYPED_TEST_P(WidgetControlsConformance, AButtonInADisabledStackIsGreyAndItsPressDoesNothing) {
  const Button& button = this->addButton("Save");
  this->stack->setEnabled(false);
  this->show();
  EXPECT_FALSE(this->harness.isEnabledOnScreen(button));
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::IsEmpty());
}

// Fields.

TYPED_TEST_P(WidgetControlsConformance, TypedTextReachesTheModelAndItsHandler) {
  const TextField& field = this->addField("a");
  this->show();
  this->harness.typeText(field, "bc");
  EXPECT_EQ(field.text(), "abc");
  EXPECT_EQ(this->harness.textOnScreen(field), "abc");
  ASSERT_THAT(this->edits, testing::Not(testing::IsEmpty()));
  EXPECT_EQ(this->edits.back(), "abc");
}

TYPED_TEST_P(WidgetControlsConformance, ATextThatTheProgramSetsIsShownAndIsNoEdit) {
  TextField& field = this->addField("before");
  field.setPlaceholder("Name");
  this->show();
  EXPECT_EQ(this->harness.textOnScreen(field), "before");
  EXPECT_EQ(this->harness.placeholderOnScreen(field), "Name");
  field.setText("größer als ①");
  this->harness.settle();
  EXPECT_EQ(this->harness.textOnScreen(field), "größer als ①");
  EXPECT_THAT(this->edits, testing::IsEmpty());
}

TYPED_TEST_P(WidgetControlsConformance, AHandlerMayCorrectWhatIsTyped) {
  TextField& field = this->stack->template add<TextField>();
  field.setOnEdit([&](const std::string& text) { field.setText("<" + text + ">"); });
  this->show();
  this->harness.typeText(field, "x");
  this->harness.settle();
  EXPECT_EQ(field.text(), "<x>");
  EXPECT_EQ(this->harness.textOnScreen(field), "<x>");
}

TYPED_TEST_P(WidgetControlsConformance, AReadOnlyFieldKeepsItsText) {
  TextField& field = this->addField("fixed");
  field.setEditable(false);
  this->show();
  this->harness.typeText(field, "x");
  this->harness.settle();
  EXPECT_EQ(field.text(), "fixed");
  EXPECT_EQ(this->harness.textOnScreen(field), "fixed");
  EXPECT_THAT(this->edits, testing::IsEmpty());

  field.setEditable(true);
  this->harness.settle();
  this->harness.typeText(field, "x");
  EXPECT_EQ(field.text(), "fixedx");
}

TYPED_TEST_P(WidgetControlsConformance, ADisabledFieldKeepsItsText) {
  TextField& field = this->addField("fixed");
  field.setEnabled(false);
  this->show();
  EXPECT_FALSE(this->harness.isEnabledOnScreen(field));
  this->harness.typeText(field, "x");
  this->harness.settle();
  EXPECT_EQ(this->harness.textOnScreen(field), "fixed");
  EXPECT_THAT(this->edits, testing::IsEmpty());
}

// What is shown.

TYPED_TEST_P(WidgetControlsConformance, TextsAreShownToTheLetter) {
  const std::string text = "<b>Save & Quit</b> &amp; &x [*]\nnext line %n";
  const Label& label = this->stack->template add<Label>(text);
  const Button& button = this->addButton("<i>Save && &Quit</i>");
  const Button& link = this->stack->template add<Button>("a & b", ButtonStyle::link);
  this->window->setTitle("A [*] & <b> — %1");
  this->show();
  EXPECT_EQ(this->harness.textOnScreen(label), text);
  EXPECT_EQ(this->harness.textOnScreen(button), "<i>Save && &Quit</i>");
  EXPECT_EQ(this->harness.textOnScreen(link), "a & b");
  EXPECT_EQ(this->harness.titleOnScreen(*this->window), "A [*] & <b> — %1");
}

TYPED_TEST_P(WidgetControlsConformance, TextsThatChangeAreShown) {
  Label& label = this->stack->template add<Label>("one");
  Button& button = this->addButton("one");
  this->show();
  label.setText("two");
  button.setTitle("three");
  this->window->setTitle("four");
  this->harness.settle();
  EXPECT_EQ(this->harness.textOnScreen(label), "two");
  EXPECT_EQ(this->harness.textOnScreen(button), "three");
  EXPECT_EQ(this->harness.titleOnScreen(*this->window), "four");
}

TYPED_TEST_P(WidgetControlsConformance, AHiddenViewIsNotOnTheScreenUntilItIsShown) {
  Button& button = this->addButton("Save");
  button.setHidden(true);
  this->show();
  EXPECT_FALSE(this->harness.isShown(button));
  button.setHidden(false);
  this->harness.settle();
  EXPECT_TRUE(this->harness.isShown(button));
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save"));
  this->stack->setHidden(true);
  this->harness.settle();
  EXPECT_FALSE(this->harness.isShown(button));
}

TYPED_TEST_P(WidgetControlsConformance, AScreenReaderSaysTheLabelOfAViewOrItsOwnText) {
  const Button& button = this->addButton("Save & Quit");
  TextField& field = this->addField("");
  field.setAccessibilityLabel("Name of the folder");
  const Label& label = this->stack->template add<Label>("Message");
  const Button& link = this->stack->template add<Button>("example.org", ButtonStyle::link);
  this->show();
  EXPECT_EQ(this->harness.nameForScreenReaders(button), "Save & Quit");
  EXPECT_EQ(this->harness.nameForScreenReaders(field), "Name of the folder");
  EXPECT_EQ(this->harness.nameForScreenReaders(label), "Message");
  EXPECT_EQ(this->harness.nameForScreenReaders(link), "example.org");
}

TYPED_TEST_P(WidgetControlsConformance, AViewAddedToAShownStackIsShownAndWorks) {
  this->show();
  const int before = this->harness.widgetCount();
  StackView& row = this->stack->template add<StackView>(Orientation::horizontal);
  Button& button = row.template add<Button>("Late");
  button.setOnPress([this] { this->pressed.emplace_back("Late"); });
  this->harness.settle();
  EXPECT_GT(this->harness.widgetCount(), before);
  EXPECT_TRUE(this->harness.isShown(button));
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Late"));
}

TYPED_TEST_P(WidgetControlsConformance, ARemovedViewTakesItsWidgetsAlong) {
  const Button& stays = this->addButton("Stays");
  this->show();
  const int before = this->harness.widgetCount();
  StackView& row = this->stack->template add<StackView>(Orientation::horizontal);
  row.template add<Button>("Inner");
  row.template add<ScrollView>(std::make_unique<Label>("Text"));
  this->harness.settle();
  this->stack->remove(row);
  this->harness.settle();
  EXPECT_EQ(this->harness.widgetCount(), before);
  this->harness.click(stays);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Stays"));
}

TYPED_TEST_P(WidgetControlsConformance, OtherContentTakesThePlaceOfTheOld) {
  this->addButton("Old");
  this->show();
  const Label& label = this->window->template setContent<Label>("New");
  this->harness.settle();
  EXPECT_TRUE(this->harness.isShown(label));
  EXPECT_EQ(this->harness.textOnScreen(label), "New");
}

// Windows.

TYPED_TEST_P(WidgetControlsConformance, AWindowIsResizableIfTheProgramSaysSo) {
  this->window->setMinimumContentSize({.width = 250, .height = 150});
  this->show();
  EXPECT_FALSE(this->harness.isResizableOnScreen(*this->window));
  this->window->setResizable(true);
  this->harness.settle();
  EXPECT_TRUE(this->harness.isResizableOnScreen(*this->window));
  EXPECT_EQ(this->harness.minimumSizeOnScreen(*this->window), (Size{.width = 250, .height = 150}));
}

REGISTER_TYPED_TEST_SUITE_P(WidgetControlsConformance, AClickOnAButtonIsHeardOnce,
                            AClickOnALinkIsHeardOnce, ADisabledButtonIsGreyAndItsPressDoesNothing,
                            AButtonInADisabledStackIsGreyAndItsPressDoesNothing,
                            TypedTextReachesTheModelAndItsHandler,
                            ATextThatTheProgramSetsIsShownAndIsNoEdit,
                            AHandlerMayCorrectWhatIsTyped, AReadOnlyFieldKeepsItsText,
                            ADisabledFieldKeepsItsText, TextsAreShownToTheLetter,
                            TextsThatChangeAreShown, AHiddenViewIsNotOnTheScreenUntilItIsShown,
                            AScreenReaderSaysTheLabelOfAViewOrItsOwnText,
                            AViewAddedToAShownStackIsShownAndWorks,
                            ARemovedViewTakesItsWidgetsAlong, OtherContentTakesThePlaceOfTheOld,
                            AWindowIsResizableIfTheProgramSaysSo);

}  // namespace quillmar
