// Conformance tests of window systems: fields that offer completions.

#pragma once

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/text_field.h"
#include "tests/conformance/widgets_fixture.h"

namespace quillmar {

/// The user types into a field that completes the names of fruit by their beginnings. Return and
/// Escape press buttons of the window.
template <class Harness>
class CompletionsConformance : public WidgetsFixture<Harness> {
 protected:
  CompletionsConformance() : field(this->addField("")) {
    field.setCompletions([](const std::string& typed) {
      std::vector<TextCompletion> found;
      for (const char* const name : {"apple", "apricot", "avocado", "banana"}) {
        if (std::string(name).starts_with(typed)) found.push_back({.text = name, .image = {}});
      }
      return found;
    });
    this->addButton("Save").setKeyEquivalent(keys::returnKey);
    this->addButton("Cancel").setKeyEquivalent(keys::escape);
    this->window->makeFirstResponder(&field);
  }

  void showAndType(const std::string& text) {
    this->show();
    this->harness.typeAtFocus(*this->window, text);
    this->edits.clear();
  }
  void press(const KeyEquivalent& key) { this->harness.pressKey(*this->window, pressOf(key)); }
  std::vector<std::string> list() { return this->harness.completionsOnScreen(field); }
  void expectText(const std::string& text) {
    this->harness.settle();
    EXPECT_EQ(field.text(), text);
    EXPECT_EQ(this->harness.textOnScreen(field), text);
  }

  TextField& field;
};

TYPED_TEST_SUITE_P(CompletionsConformance);

TYPED_TEST_P(CompletionsConformance, TheListFollowsWhatTheUserTypes) {
  this->show();
  EXPECT_THAT(this->list(), testing::IsEmpty());
  this->harness.typeAtFocus(*this->window, "a");
  EXPECT_THAT(this->list(), testing::ElementsAre("apple", "apricot", "avocado"));
  this->harness.typeAtFocus(*this->window, "p");
  EXPECT_THAT(this->list(), testing::ElementsAre("apple", "apricot"));
  this->harness.typeAtFocus(*this->window, "x");
  EXPECT_THAT(this->list(), testing::IsEmpty());
  this->expectText("apx");
}

TYPED_TEST_P(CompletionsConformance, TheArrowKeysSelectAndLeaveTheTextAlone) {
  this->showAndType("ap");
  this->press(keys::down);
  EXPECT_THAT(this->list(), testing::ElementsAre("[apple]", "apricot"));
  this->press(keys::down);
  EXPECT_THAT(this->list(), testing::ElementsAre("apple", "[apricot]"));
  this->press(keys::down);
  EXPECT_THAT(this->list(), testing::ElementsAre("apple", "apricot"));
  this->press(keys::up);
  this->press(keys::up);
  EXPECT_THAT(this->list(), testing::ElementsAre("[apple]", "apricot"));
  this->press(keys::pageDown);
  EXPECT_THAT(this->list(), testing::ElementsAre("apple", "[apricot]"));
  this->press(keys::pageUp);
  EXPECT_THAT(this->list(), testing::ElementsAre("[apple]", "apricot"));
  this->expectText("ap");
  EXPECT_THAT(this->edits, testing::IsEmpty());
}

TYPED_TEST_P(CompletionsConformance, ReturnAcceptsTheSelectedCompletionAndPressesNoButton) {
  this->showAndType("a");
  this->press(keys::down);
  this->press(keys::returnKey);
  this->expectText("apple");
  EXPECT_THAT(this->edits, testing::ElementsAre("apple"));
  EXPECT_THAT(this->list(), testing::IsEmpty());
  EXPECT_THAT(this->pressed, testing::IsEmpty());
  this->press(keys::returnKey);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save"));
}

TYPED_TEST_P(CompletionsConformance, TabAcceptsTheSelectedCompletionAndTheFocusStays) {
  this->showAndType("a");
  this->press(keys::up);
  this->press(keys::tab);
  this->expectText("avocado");
  EXPECT_THAT(this->edits, testing::ElementsAre("avocado"));
  EXPECT_THAT(this->list(), testing::IsEmpty());
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &this->field);
}

TYPED_TEST_P(CompletionsConformance, WithoutASelectionReturnPressesTheDefaultButton) {
  this->showAndType("a");
  this->press(keys::returnKey);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save"));
  this->expectText("a");
}

TYPED_TEST_P(CompletionsConformance, WithoutASelectionTabLeavesTheFieldAndClosesTheList) {
  this->showAndType("a");
  this->press(keys::tab);
  EXPECT_NE(this->harness.focusedOnScreen(*this->window), &this->field);
  EXPECT_THAT(this->list(), testing::IsEmpty());
  this->expectText("a");
}

TYPED_TEST_P(CompletionsConformance, EscapeFirstClosesTheListOnly) {
  this->showAndType("a");
  this->press(keys::down);
  this->press(keys::escape);
  EXPECT_THAT(this->list(), testing::IsEmpty());
  EXPECT_THAT(this->pressed, testing::IsEmpty());
  this->expectText("a");
  this->press(keys::escape);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Cancel"));
}

TYPED_TEST_P(CompletionsConformance, AClickAcceptsACompletion) {
  this->showAndType("a");
  this->harness.clickCompletion(this->field, 1);
  this->expectText("apricot");
  EXPECT_THAT(this->edits, testing::ElementsAre("apricot"));
  EXPECT_THAT(this->list(), testing::IsEmpty());
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &this->field);
}

TYPED_TEST_P(CompletionsConformance, AfterAnAcceptedCompletionTypingGoesOnAtItsEnd) {
  this->showAndType("b");
  this->press(keys::down);
  this->press(keys::returnKey);
  this->harness.typeAtFocus(*this->window, "s");
  this->expectText("bananas");
}

TYPED_TEST_P(CompletionsConformance, ATextThatTheProgramSetsOpensNoListAndClosesAnOpenOne) {
  this->show();
  this->field.setText("a");
  this->harness.settle();
  EXPECT_THAT(this->list(), testing::IsEmpty());
  this->harness.typeText(this->field, "p");
  EXPECT_THAT(this->list(), testing::Not(testing::IsEmpty()));
  this->field.setText("b");
  this->harness.settle();
  EXPECT_THAT(this->list(), testing::IsEmpty());
}

TYPED_TEST_P(CompletionsConformance, TheListClosesWhenTheWindowLosesTheKeyboardOrCloses) {
  this->showAndType("a");
  EXPECT_THAT(this->list(), testing::Not(testing::IsEmpty()));
  this->harness.switchToAnotherWindow(*this->window);
  EXPECT_THAT(this->list(), testing::IsEmpty());
  this->show();
  this->harness.typeText(this->field, "p");
  EXPECT_THAT(this->list(), testing::Not(testing::IsEmpty()));
  this->window->close();
  this->harness.settle();
  EXPECT_THAT(this->list(), testing::IsEmpty());
}

TYPED_TEST_P(CompletionsConformance, ASheetAboveTheFieldClosesTheList) {
  Window sheet(this->harness.windows());
  this->showAndType("a");
  ASSERT_TRUE(this->window->beginSheet(sheet, {}).ok());
  this->harness.settle();
  EXPECT_THAT(this->list(), testing::IsEmpty());
}

TYPED_TEST_P(CompletionsConformance, ADisabledFieldClosesItsList) {
  this->showAndType("a");
  this->field.setEnabled(false);
  this->harness.settle();
  EXPECT_THAT(this->list(), testing::IsEmpty());
}

TYPED_TEST_P(CompletionsConformance, AnAcceptedCompletionMayDestroyItsOwnWindow) {
  this->field.setOnEdit([this](const std::string& text) {
    if (text == "apple") this->window.reset();
  });
  this->showAndType("a");
  this->harness.clickCompletion(this->field, 0);
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
}

REGISTER_TYPED_TEST_SUITE_P(
    CompletionsConformance, TheListFollowsWhatTheUserTypes, TheArrowKeysSelectAndLeaveTheTextAlone,
    ReturnAcceptsTheSelectedCompletionAndPressesNoButton,
    TabAcceptsTheSelectedCompletionAndTheFocusStays, WithoutASelectionReturnPressesTheDefaultButton,
    WithoutASelectionTabLeavesTheFieldAndClosesTheList, EscapeFirstClosesTheListOnly,
    AClickAcceptsACompletion, AfterAnAcceptedCompletionTypingGoesOnAtItsEnd,
    ATextThatTheProgramSetsOpensNoListAndClosesAnOpenOne,
    TheListClosesWhenTheWindowLosesTheKeyboardOrCloses, ASheetAboveTheFieldClosesTheList,
    ADisabledFieldClosesItsList, AnAcceptedCompletionMayDestroyItsOwnWindow);

}  // namespace quillmar
