// Conformance tests of window systems: alerts.

#pragma once

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/alert.h"
#include "platform/widgets/button.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/views.h"

namespace quillmar {

template <class Harness>
class AlertConformance : public WidgetsFixture<Harness> {
 protected:
  void beginAlert(const std::vector<std::string>& buttons) {
    const Alert alert{.style = AlertStyle::warning,
                      .message = "Delete Folder",
                      .informativeText = "Are you sure?",
                      .buttons = buttons};
    const auto answer = [this](std::size_t button) {
      EXPECT_TRUE(this->window->takesInput());
      answers.push_back(button);
    };
    ASSERT_TRUE(this->window->beginAlert(alert, {}, answer).ok());
    this->harness.settle();
  }
  Window& sheet() { return *this->window->sheet(); }
  std::vector<std::string> titles() {
    std::vector<std::string> titles;
    for (const Button* const button : viewsOf<Button>(sheet())) {
      titles.push_back(this->harness.textOnScreen(*button));
    }
    return titles;
  }

  std::vector<std::size_t> answers;
};

TYPED_TEST_SUITE_P(AlertConformance);

TYPED_TEST_P(AlertConformance, AnAlertAnswersWithThePressedButtonAfterItHasClosed) {
  this->show();
  this->beginAlert({"Delete", "Keep", "Cancel"});
  EXPECT_TRUE(this->harness.isOnScreen(this->sheet()));
  EXPECT_FALSE(this->window->takesInput());
  EXPECT_THAT(labelTexts(this->sheet()), testing::ElementsAre("Delete Folder", "Are you sure?"));
  EXPECT_THAT(this->titles(), testing::ElementsAre("Cancel", "Keep", "Delete"));
  this->harness.click(*buttonTitled(this->sheet(), "Keep"));
  this->harness.settle();
  EXPECT_EQ(this->window->sheet(), nullptr);
  EXPECT_THAT(this->answers, testing::ElementsAre(1));
}

TYPED_TEST_P(AlertConformance, ReturnPressesTheFirstButtonAndEscapeTheOneThatCancels) {
  this->show();
  this->beginAlert({"Delete", "Cancel"});
  EXPECT_TRUE(this->harness.isDefaultOnScreen(*buttonTitled(this->sheet(), "Delete")));
  this->harness.pressKey(this->sheet(), pressOf(keys::returnKey));
  this->harness.settle();
  this->beginAlert({"Delete", "Cancel"});
  this->harness.pressKey(this->sheet(), pressOf(keys::escape));
  this->harness.settle();
  EXPECT_THAT(this->answers, testing::ElementsAre(0, 1));
}

TYPED_TEST_P(AlertConformance, EscapeDoesNothingToAChoiceThatCannotBeCancelled) {
  this->show();
  this->beginAlert({"Merge", "Replace"});
  this->harness.pressKey(this->sheet(), pressOf(keys::escape));
  this->harness.settle();
  EXPECT_NE(this->window->sheet(), nullptr);
  EXPECT_THAT(this->answers, testing::IsEmpty());
}

TYPED_TEST_P(AlertConformance, AnAlertWithoutButtonsHasOneThatSaysOk) {
  this->show();
  this->beginAlert({});
  EXPECT_THAT(this->titles(), testing::ElementsAre("OK"));
  this->harness.pressKey(this->sheet(), pressOf(keys::returnKey));
  EXPECT_THAT(this->answers, testing::ElementsAre(0));
}

TYPED_TEST_P(AlertConformance, AnAlertThatOnlyInformsClosesOnEscape) {
  this->show();
  this->beginAlert({});
  this->harness.pressKey(this->sheet(), pressOf(keys::escape));
  this->harness.settle();
  EXPECT_EQ(this->window->sheet(), nullptr);
}

TYPED_TEST_P(AlertConformance, AnAlertThatTheTitleBarClosesHasNoAnswer) {
  this->show();
  this->beginAlert({"Delete", "Cancel"});
  this->harness.closeByTitleBar(this->sheet());
  this->harness.settle();
  EXPECT_TRUE(this->window->takesInput());
  EXPECT_THAT(this->answers, testing::IsEmpty());
}

TYPED_TEST_P(AlertConformance, AParentThatIsDestroyedTakesItsAlertAlongWithoutAnAnswer) {
  const int before = this->harness.widgetCount();
  this->show();
  this->beginAlert({"Delete", "Cancel"});
  this->window.reset();
  this->harness.settle();
  EXPECT_EQ(this->harness.widgetCount(), before);
  EXPECT_THAT(this->answers, testing::IsEmpty());
}

TYPED_TEST_P(AlertConformance, AnAnswerMayBeginAnotherAlert) {
  this->show();
  const auto begin = [this](const std::string& button, auto onAnswer) {
    const Alert alert{.style = {}, .message = "?", .informativeText = "", .buttons = {button}};
    ASSERT_TRUE(this->window->beginAlert(alert, {}, onAnswer).ok());
    this->harness.settle();
  };
  begin("Next", [&](std::size_t) { begin("Last", [](std::size_t) {}); });
  this->harness.click(*buttonTitled(this->sheet(), "Next"));
  this->harness.settle();
  EXPECT_THAT(this->titles(), testing::ElementsAre("Last"));
}

TYPED_TEST_P(AlertConformance, AnAnswerMayDestroyTheParent) {
  this->show();
  const auto destroy = [this](std::size_t) { this->window.reset(); };
  ASSERT_TRUE(this->window->beginAlert({}, {}, destroy).ok());
  this->harness.settle();
  this->harness.click(*buttonTitled(this->sheet(), "OK"));
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
}

REGISTER_TYPED_TEST_SUITE_P(AlertConformance, AnAlertAnswersWithThePressedButtonAfterItHasClosed,
                            ReturnPressesTheFirstButtonAndEscapeTheOneThatCancels,
                            EscapeDoesNothingToAChoiceThatCannotBeCancelled,
                            AnAlertWithoutButtonsHasOneThatSaysOk,
                            AnAlertThatOnlyInformsClosesOnEscape,
                            AnAlertThatTheTitleBarClosesHasNoAnswer,
                            AParentThatIsDestroyedTakesItsAlertAlongWithoutAnAnswer,
                            AnAnswerMayBeginAnotherAlert, AnAnswerMayDestroyTheParent);

}  // namespace quillmar
