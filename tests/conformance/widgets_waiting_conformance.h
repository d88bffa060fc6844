// Conformance tests of window systems: tasks that wait until a window has no sheet or panel, and
// sheets of sheets.

#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/button.h"
#include "platform/widgets/window.h"
#include "tests/conformance/widgets_fixture.h"

namespace quillmar {

template <class Harness>
class WaitingConformance : public WidgetsFixture<Harness> {
 protected:
  void callWhenFree(const std::string& name) {
    this->window->whenFree([this, name] { called.push_back(name); });
  }
  void begin(Window& sheet) { begin(*this->window, sheet); }
  void begin(Window& parent, Window& sheet) {
    ASSERT_TRUE(parent.beginSheet(sheet, {}).ok());
    this->harness.settle();
  }
  void close(Window& sheet) {
    this->harness.closeByTitleBar(sheet);
    this->harness.settle();
  }

  std::vector<std::string> called;
};

TYPED_TEST_SUITE_P(WaitingConformance);

TYPED_TEST_P(WaitingConformance, ATaskOfAFreeWindowIsCalledAtOnce) {
  this->callWhenFree("before it is shown");
  this->show();
  this->callWhenFree("shown");
  EXPECT_THAT(this->called, testing::ElementsAre("shown"));
}

TYPED_TEST_P(WaitingConformance, TasksWaitForTheSheetAndKeepTheirOrder) {
  this->show();
  Window sheet(this->harness.windows());
  this->begin(sheet);
  this->callWhenFree("first");
  this->callWhenFree("second");
  EXPECT_THAT(this->called, testing::IsEmpty());
  this->close(sheet);
  EXPECT_THAT(this->called, testing::ElementsAre("first", "second"));
}

TYPED_TEST_P(WaitingConformance, TasksWaitForThePanel) {
  this->show();
  ASSERT_TRUE(this->window->beginOpenPanel({}, {}).ok());
  this->harness.settle();
  this->callWhenFree("task");
  EXPECT_THAT(this->called, testing::IsEmpty());
  this->harness.cancelPanel(*this->window);
  EXPECT_THAT(this->called, testing::ElementsAre("task"));
}

TYPED_TEST_P(WaitingConformance, TasksWaitForTheAlertAndItsAnswer) {
  this->show();
  ASSERT_TRUE(
      this->window->beginAlert({}, {}, [this](std::size_t) { this->called.push_back("answer"); })
          .ok());
  this->harness.settle();
  this->callWhenFree("task");
  this->harness.pressKey(*this->window->sheet(), pressOf(keys::returnKey));
  this->harness.settle();
  EXPECT_THAT(this->called, testing::ElementsAre("answer", "task"));
}

TYPED_TEST_P(WaitingConformance, ATaskThatBeginsASheetDelaysTheOthers) {
  this->show();
  Window first(this->harness.windows());
  Window second(this->harness.windows());
  this->begin(first);
  this->window->whenFree([&] { this->begin(second); });
  this->callWhenFree("last");
  this->close(first);
  EXPECT_TRUE(this->harness.isOnScreen(second));
  EXPECT_THAT(this->called, testing::IsEmpty());
  this->close(second);
  EXPECT_THAT(this->called, testing::ElementsAre("last"));
}

TYPED_TEST_P(WaitingConformance, AWindowThatClosesDropsItsTasks) {
  this->show();
  Window sheet(this->harness.windows());
  this->begin(sheet);
  this->callWhenFree("task");
  this->window->close();
  this->harness.settle();
  this->show();
  this->begin(sheet);
  this->close(sheet);
  EXPECT_THAT(this->called, testing::IsEmpty());
}

TYPED_TEST_P(WaitingConformance, AWindowThatIsDestroyedDropsItsTasks) {
  this->show();
  Window sheet(this->harness.windows());
  this->begin(sheet);
  this->callWhenFree("task");
  this->window.reset();
  this->harness.settle();
  EXPECT_THAT(this->called, testing::IsEmpty());
}

TYPED_TEST_P(WaitingConformance, ATaskMayDestroyItsWindow) {
  this->show();
  Window sheet(this->harness.windows());
  this->begin(sheet);
  this->window->whenFree([this] { this->window.reset(); });
  this->callWhenFree("later");
  this->close(sheet);
  EXPECT_EQ(this->window, nullptr);
  EXPECT_THAT(this->called, testing::IsEmpty());
}

TYPED_TEST_P(WaitingConformance, ATaskMayDestroyItsWindowWhenTheSheetIsDestroyed) {
  this->show();
  auto sheet = std::make_unique<Window>(this->harness.windows());
  this->begin(*sheet);
  this->window->whenFree([this] { this->window.reset(); });
  this->callWhenFree("later");
  sheet.reset();
  EXPECT_EQ(this->window, nullptr);
  EXPECT_THAT(this->called, testing::IsEmpty());
}

TYPED_TEST_P(WaitingConformance, ASheetThatIsDestroyedFreesItsParent) {
  this->show();
  auto sheet = std::make_unique<Window>(this->harness.windows());
  this->begin(*sheet);
  this->callWhenFree("task");
  sheet.reset();
  this->harness.settle();
  EXPECT_THAT(this->called, testing::ElementsAre("task"));
}

// Sheets of sheets.

TYPED_TEST_P(WaitingConformance, ASheetBlocksTheSheetBelowItOnly) {
  const Button& button = this->addButton("Window");
  this->show();
  Window sheet(this->harness.windows());
  auto& sheetButton = sheet.template setContent<Button>("Sheet");
  sheetButton.setOnPress([this] { this->pressed.push_back("Sheet"); });
  Window details(this->harness.windows());
  auto& done = details.template setContent<Button>("Done");
  done.setOnPress([&] { details.close(); });
  this->begin(sheet);
  this->begin(sheet, details);

  this->harness.click(button);
  this->harness.click(sheetButton);
  EXPECT_THAT(this->pressed, testing::IsEmpty());
  this->harness.click(done);
  this->harness.settle();
  this->harness.click(button);
  this->harness.click(sheetButton);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Sheet"));
}

TYPED_TEST_P(WaitingConformance, AWindowThatClosesClosesTheSheetOfItsSheetFirst) {
  this->show();
  Window sheet(this->harness.windows());
  Window details(this->harness.windows());
  this->begin(sheet);
  this->begin(sheet, details);
  this->window->close();
  this->harness.settle();
  EXPECT_FALSE(this->harness.isOnScreen(details));
  EXPECT_FALSE(this->harness.isOnScreen(sheet));
  EXPECT_FALSE(this->harness.isOnScreen(*this->window));
  EXPECT_EQ(sheet.sheet(), nullptr);
}

REGISTER_TYPED_TEST_SUITE_P(WaitingConformance, ATaskOfAFreeWindowIsCalledAtOnce,
                            TasksWaitForTheSheetAndKeepTheirOrder, TasksWaitForThePanel,
                            TasksWaitForTheAlertAndItsAnswer, ATaskThatBeginsASheetDelaysTheOthers,
                            AWindowThatClosesDropsItsTasks, AWindowThatIsDestroyedDropsItsTasks,
                            ATaskMayDestroyItsWindow,
                            ATaskMayDestroyItsWindowWhenTheSheetIsDestroyed,
                            ASheetThatIsDestroyedFreesItsParent, ASheetBlocksTheSheetBelowItOnly,
                            AWindowThatClosesClosesTheSheetOfItsSheetFirst);

}  // namespace quillmar
