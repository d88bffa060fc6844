// Conformance tests of window systems: views for several lines of text.

#pragma once

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/text_view.h"
#include "tests/conformance/widgets_fixture.h"

namespace quillmar {

template <class Harness>
class TextViewConformance : public WidgetsFixture<Harness> {
 protected:
  TextView& addTextView(const std::string& text) {
    TextView& view = this->stack->template add<TextView>();
    view.setText(text);
    view.setOnEdit([this](const std::string& edited) { this->edits.push_back(edited); });
    return view;
  }
};

TYPED_TEST_SUITE_P(TextViewConformance);

TYPED_TEST_P(TextViewConformance, TypedLinesReachTheModelAndItsHandler) {
  const TextView& view = this->addTextView("ls\n");
  this->show();
  this->harness.typeText(view, "pwd");
  EXPECT_EQ(view.text(), "ls\npwd");
  EXPECT_EQ(this->harness.textOnScreen(view), "ls\npwd");
  ASSERT_THAT(this->edits, testing::Not(testing::IsEmpty()));
  EXPECT_EQ(this->edits.back(), "ls\npwd");
}

TYPED_TEST_P(TextViewConformance, ReturnBeginsALineAndDoesNotPressTheDefaultButton) {
  TextView& view = this->addTextView("");
  this->addButton("Save").setKeyEquivalent(keys::returnKey);
  this->window->makeFirstResponder(&view);
  this->show();
  this->harness.typeAtFocus(*this->window, "a");
  this->harness.pressKey(*this->window, pressOf(keys::returnKey));
  this->harness.typeAtFocus(*this->window, "b");
  EXPECT_EQ(view.text(), "a\nb");
  EXPECT_THAT(this->pressed, testing::IsEmpty());
}

TYPED_TEST_P(TextViewConformance, TabLeavesTheViewInBothDirections) {
  TextView& view = this->addTextView("a");
  Button& button = this->addButton("Other");
  this->show();
  for (const KeyEquivalent& key :
       {keys::tab, keys::backTab, keys::controlTab, keys::controlBackTab}) {
    this->window->makeFirstResponder(&view);
    this->harness.settle();
    this->harness.pressKey(*this->window, pressOf(key));
    EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &button);
  }
  EXPECT_EQ(view.text(), "a");
}

TYPED_TEST_P(TextViewConformance, ATextThatTheProgramSetsIsShownAndIsNoEdit) {
  TextView& view = this->addTextView("before");
  this->show();
  view.setText("größer\r\nals\r①\u2029\tend");
  this->harness.settle();
  EXPECT_EQ(view.text(), "größer\nals\n①\n\tend");
  EXPECT_EQ(this->harness.textOnScreen(view), "größer\nals\n①\n\tend");
  EXPECT_THAT(this->edits, testing::IsEmpty());
}

TYPED_TEST_P(TextViewConformance, UnusualSpacesSurviveAnEdit) {
  const TextView& view = this->addTextView("a\u00a0b\u2028c");
  this->show();
  this->harness.typeText(view, "d");
  EXPECT_EQ(view.text(), "a\u00a0b\u2028cd");
}

TYPED_TEST_P(TextViewConformance, AHandlerMayCorrectWhatIsTyped) {
  TextView& view = this->addTextView("");
  view.setOnEdit([&](const std::string& text) { view.setText("<" + text + ">"); });
  this->show();
  this->harness.typeText(view, "x");
  this->harness.settle();
  EXPECT_EQ(this->harness.textOnScreen(view), "<x>");
}

TYPED_TEST_P(TextViewConformance, AReadOnlyOrDisabledViewKeepsItsText) {
  TextView& view = this->addTextView("fixed");
  view.setEditable(false);
  this->show();
  this->harness.typeText(view, "x");
  view.setEditable(true);
  view.setEnabled(false);
  this->harness.settle();
  EXPECT_FALSE(this->harness.isEnabledOnScreen(view));
  this->harness.typeText(view, "x");
  this->harness.settle();
  EXPECT_EQ(this->harness.textOnScreen(view), "fixed");
  EXPECT_THAT(this->edits, testing::IsEmpty());
}

TYPED_TEST_P(TextViewConformance, InvisibleCharactersAreShownAsMarks) {
  TextView& view = this->addTextView("");
  view.setEditable(false);
  view.setShowsInvisibleCharacters(true);
  view.setText("a\u202eb\u200bc\u2028\u2029\r\n\tend");
  this->show();
  const std::string shown = "a‹U+202E›b‹U+200B›c‹U+2028›‹U+2029›‹U+000D›\n\tend";
  EXPECT_EQ(this->harness.textOnScreen(view), shown);
  EXPECT_EQ(view.text(), "a\u202eb\u200bc\u2028\u2029\r\n\tend");
  view.setText("x\u200b");
  this->harness.settle();
  EXPECT_EQ(this->harness.textOnScreen(view), "x‹U+200B›");
  EXPECT_THAT(this->edits, testing::IsEmpty());
}

TYPED_TEST_P(TextViewConformance, TabLeavesAReadOnlyViewAndReturnPressesTheDefaultButton) {
  TextView& view = this->addTextView("text");
  view.setEditable(false);
  Button& button = this->addButton("Merge");
  button.setKeyEquivalent(keys::returnKey);
  this->window->makeFirstResponder(&view);
  this->show();
  this->harness.pressKey(*this->window, pressOf(keys::returnKey));
  EXPECT_THAT(this->pressed, testing::ElementsAre("Merge"));
  this->harness.pressKey(*this->window, pressOf(keys::tab));
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &button);
}

TYPED_TEST_P(TextViewConformance, AnEditMayDestroyItsOwnWindow) {
  TextView& view = this->addTextView("");
  view.setOnEdit([this](const std::string&) { this->window.reset(); });
  this->show();
  this->harness.typeText(view, "x");
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
}

TYPED_TEST_P(TextViewConformance, AScreenReaderSaysTheLabelOfTheView) {
  TextView& view = this->addTextView("ls");
  view.setAccessibilityLabel("Command");
  this->show();
  EXPECT_EQ(this->harness.nameForScreenReaders(view), "Command");
}

REGISTER_TYPED_TEST_SUITE_P(TextViewConformance, TypedLinesReachTheModelAndItsHandler,
                            ReturnBeginsALineAndDoesNotPressTheDefaultButton,
                            TabLeavesTheViewInBothDirections,
                            ATextThatTheProgramSetsIsShownAndIsNoEdit, UnusualSpacesSurviveAnEdit,
                            AHandlerMayCorrectWhatIsTyped, AReadOnlyOrDisabledViewKeepsItsText,
                            InvisibleCharactersAreShownAsMarks,
                            TabLeavesAReadOnlyViewAndReturnPressesTheDefaultButton,
                            AnEditMayDestroyItsOwnWindow, AScreenReaderSaysTheLabelOfTheView);

}  // namespace quillmar
