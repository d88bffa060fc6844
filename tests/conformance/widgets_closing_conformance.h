// How windows close, and what may be destroyed meanwhile; sheets, which block a window until they
// are closed.

#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/key_equivalent.h"
#include "platform/widgets/button.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/window.h"
#include "tests/conformance/widgets_fixture.h"

namespace quillmar {

template <class Harness>
class WidgetClosingConformance : public WidgetsFixture<Harness> {};

TYPED_TEST_SUITE_P(WidgetClosingConformance);

// Closing.

TYPED_TEST_P(WidgetClosingConformance, TheTitleBarClosesTheWindowAndTellsTheDelegateOnce) {
  this->show();
  EXPECT_TRUE(this->harness.isOnScreen(*this->window));
  this->harness.closeByTitleBar(*this->window);
  this->harness.settle();
  EXPECT_FALSE(this->window->visible());
  EXPECT_FALSE(this->harness.isOnScreen(*this->window));
  EXPECT_EQ(this->delegate.closes, 1);
}

TYPED_TEST_P(WidgetClosingConformance, AWindowThatTheProgramClosesTellsTheDelegateOnce) {
  this->show();
  this->window->close();
  this->harness.settle();
  EXPECT_FALSE(this->harness.isOnScreen(*this->window));
  EXPECT_EQ(this->delegate.closes, 1);
}

TYPED_TEST_P(WidgetClosingConformance, EscapeClosesOnlyAWindowThatWantsIt) {
  this->addField("");
  this->show();
  this->harness.pressKey(*this->window, pressOf(keys::escape));
  EXPECT_TRUE(this->window->visible());
  this->window->setClosesOnEscape(true);
  this->harness.pressKey(*this->window, pressOf(keys::escape));
  this->harness.settle();
  EXPECT_FALSE(this->harness.isOnScreen(*this->window));
  EXPECT_EQ(this->delegate.closes, 1);
}

TYPED_TEST_P(WidgetClosingConformance, AClosedWindowIsShownAgainAsItWas) {
  TextField& field = this->addField("");
  this->window->makeFirstResponder(&field);
  this->show();
  this->harness.typeAtFocus(*this->window, "kept");
  this->window->close();
  this->harness.settle();
  this->show();
  EXPECT_TRUE(this->harness.isOnScreen(*this->window));
  EXPECT_EQ(this->harness.textOnScreen(field), "kept");
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &field);
  this->harness.typeText(field, "!");
  EXPECT_EQ(field.text(), "kept!");
}

TYPED_TEST_P(WidgetClosingConformance, APressMayCloseItsOwnWindow) {
  Button& button = this->addButton("Close");
  button.setOnPress([this] { this->window->close(); });
  this->show();
  this->harness.click(button);
  this->harness.settle();
  EXPECT_FALSE(this->harness.isOnScreen(*this->window));
  EXPECT_EQ(this->delegate.closes, 1);
}

TYPED_TEST_P(WidgetClosingConformance, APressMayDestroyItsOwnWindow) {
  const int before = this->harness.widgetCount();
  Button& button = this->addButton("Close");
  button.setOnPress([this] { this->window.reset(); });
  this->show();
  this->harness.click(button);
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
  EXPECT_EQ(this->harness.widgetCount(), before);
}

TYPED_TEST_P(WidgetClosingConformance, AKeyMayDestroyItsOwnWindow) {
  const int before = this->harness.widgetCount();
  TextField& field = this->addField("");
  Button& button = this->addButton("Run");
  button.setKeyEquivalent(keys::returnKey);
  button.setOnPress([this] { this->window.reset(); });
  this->window->makeFirstResponder(&field);
  this->show();
  this->harness.pressKey(*this->window, pressOf(keys::returnKey));
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
  EXPECT_EQ(this->harness.widgetCount(), before);
}

TYPED_TEST_P(WidgetClosingConformance, AKeyOnAFocusedButtonMayDestroyItsOwnWindow) {
  for (const KeyEquivalent& key : {keys::returnKey, keys::space}) {
    auto inner = std::make_unique<Window>(this->harness.windows());
    auto& button = inner->template setContent<Button>("Run");
    button.setOnPress([&] { inner.reset(); });
    inner->makeFirstResponder(&button);
    this->show(*inner);
    this->harness.pressKey(*inner, pressOf(key));
    this->harness.settle();
    EXPECT_EQ(inner, nullptr);
  }
}

TYPED_TEST_P(WidgetClosingConformance, AnEditMayDestroyItsOwnWindow) {
  const int before = this->harness.widgetCount();
  TextField& field = this->addField("");
  field.setOnEdit([this](const std::string&) { this->window.reset(); });
  this->window->makeFirstResponder(&field);
  this->show();
  this->harness.typeAtFocus(*this->window, "x");
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
  EXPECT_EQ(this->harness.widgetCount(), before);
}

TYPED_TEST_P(WidgetClosingConformance, ADelegateMayDestroyTheWindowThatCloses) {
  class Destroyer final : public WindowDelegate {
   public:
    explicit Destroyer(std::unique_ptr<Window>& window) : window_(window) {}
    void windowWillClose(Window& /*window*/) override { window_.reset(); }

   private:
    std::unique_ptr<Window>& window_;
  };
  const int before = this->harness.widgetCount();
  Destroyer destroyer(this->window);
  this->addButton("Some");
  this->window->setDelegate(&destroyer);
  this->show();
  this->harness.closeByTitleBar(*this->window);
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
  EXPECT_EQ(this->harness.widgetCount(), before);
}

TYPED_TEST_P(WidgetClosingConformance, APressMayRemoveItsOwnButton) {
  Button& button = this->addButton("Remove");
  const Button& stays = this->addButton("Stays");
  button.setOnPress([&] { this->stack->remove(button); });
  this->show();
  this->harness.click(button);
  this->harness.settle();
  this->harness.click(stays);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Stays"));
}

TYPED_TEST_P(WidgetClosingConformance, ADestroyedWindowTakesAllItsWidgetsAlong) {
  const int before = this->harness.widgetCount();
  {
    Window other(this->harness.windows());
    StackView& column = other.template setContent<StackView>(Orientation::vertical);
    column.template add<Label>("Text");
    column.template add<TextField>();
    column.template add<ImageView>(std::nullopt);
    this->show(other);
    EXPECT_GT(this->harness.widgetCount(), before);
  }
  this->harness.settle();
  EXPECT_EQ(this->harness.widgetCount(), before);
}

// Sheets.

TYPED_TEST_P(WidgetClosingConformance, ASheetBlocksItsParentUntilItIsClosed) {
  const Button& button = this->addButton("Save");
  TextField& field = this->addField("a");
  this->addButton("Run").setKeyEquivalent(keys::returnKey);
  this->window->makeFirstResponder(&field);
  this->show();
  Window sheet(this->harness.windows());
  auto& done = sheet.template setContent<Button>("Done");
  done.setOnPress([&] { sheet.close(); });
  ASSERT_TRUE(this->window->beginSheet(sheet, {}).ok());
  this->harness.settle();

  this->harness.click(button);
  this->harness.typeText(field, "b");
  this->harness.typeAtFocus(*this->window, "b");
  this->harness.pressKey(*this->window, pressOf(keys::returnKey));
  this->harness.closeByTitleBar(*this->window);
  this->harness.settle();
  EXPECT_THAT(this->pressed, testing::IsEmpty());
  EXPECT_EQ(field.text(), "a");
  EXPECT_EQ(this->harness.textOnScreen(field), "a");
  EXPECT_TRUE(this->harness.isOnScreen(*this->window));

  this->harness.click(done);
  this->harness.settle();
  EXPECT_FALSE(this->harness.isOnScreen(sheet));
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &field);
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save"));
  this->harness.typeText(field, "b");
  EXPECT_EQ(field.text(), "ab");
}

/// Calls a function when its window closes.
class ClosingDelegate final : public WindowDelegate {
 public:
  explicit ClosingDelegate(std::function<void()> onClose) : onClose_(std::move(onClose)) {}
  void windowWillClose(Window& /*window*/) override { onClose_(); }

 private:
  std::function<void()> onClose_;
};

TYPED_TEST_P(WidgetClosingConformance, ASheetThatClosesMayBeFollowedByAnotherOne) {
  const Button& button = this->addButton("Save");
  this->show();
  Window first(this->harness.windows());
  Window second(this->harness.windows());
  first.template setContent<Label>("First");
  auto& done = second.template setContent<Button>("Done");
  done.setOnPress([&] { second.close(); });
  ClosingDelegate closing([&] { ASSERT_TRUE(this->window->beginSheet(second, {}).ok()); });
  first.setDelegate(&closing);
  ASSERT_TRUE(this->window->beginSheet(first, {}).ok());
  this->harness.settle();

  first.close();
  this->harness.settle();
  EXPECT_FALSE(this->harness.isOnScreen(first));
  EXPECT_TRUE(this->harness.isOnScreen(second));
  EXPECT_FALSE(this->window->takesInput());
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::IsEmpty());

  this->harness.click(done);
  this->harness.settle();
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save"));
}

TYPED_TEST_P(WidgetClosingConformance, ADelegateMayShowItsWindowAgain) {
  Button& button = this->addButton("Save");
  ClosingDelegate closing([&] { EXPECT_TRUE(this->window->show({}).ok()); });
  this->window->setDelegate(&closing);
  this->show();
  this->harness.closeByTitleBar(*this->window);
  this->harness.settle();
  EXPECT_TRUE(this->harness.isOnScreen(*this->window));
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save"));
}

TYPED_TEST_P(WidgetClosingConformance, AParentThatClosesClosesItsSheetFirst) {
  this->show();
  Window sheet(this->harness.windows());
  int closes = 0;
  ClosingDelegate closing([&] {
    ++closes;
    EXPECT_TRUE(this->window->visible());
  });
  sheet.setDelegate(&closing);
  ASSERT_TRUE(this->window->beginSheet(sheet, {}).ok());
  this->harness.settle();
  this->window->close();
  this->harness.settle();
  EXPECT_EQ(closes, 1);
  EXPECT_FALSE(this->harness.isOnScreen(sheet));
  EXPECT_FALSE(this->harness.isOnScreen(*this->window));
}

TYPED_TEST_P(WidgetClosingConformance, AParentThatIsDestroyedClosesItsSheet) {
  this->show();
  Window sheet(this->harness.windows());
  int closes = 0;
  ClosingDelegate closing([&] { ++closes; });
  sheet.setDelegate(&closing);
  ASSERT_TRUE(this->window->beginSheet(sheet, {}).ok());
  this->harness.settle();
  this->window.reset();
  this->harness.settle();
  EXPECT_EQ(closes, 1);
  EXPECT_FALSE(this->harness.isOnScreen(sheet));
  this->show(sheet);
  EXPECT_TRUE(sheet.takesInput());
}

REGISTER_TYPED_TEST_SUITE_P(WidgetClosingConformance,
                            TheTitleBarClosesTheWindowAndTellsTheDelegateOnce,
                            AWindowThatTheProgramClosesTellsTheDelegateOnce,
                            EscapeClosesOnlyAWindowThatWantsIt, AClosedWindowIsShownAgainAsItWas,
                            APressMayCloseItsOwnWindow, APressMayDestroyItsOwnWindow,
                            AKeyMayDestroyItsOwnWindow, AKeyOnAFocusedButtonMayDestroyItsOwnWindow,
                            AnEditMayDestroyItsOwnWindow, ADelegateMayDestroyTheWindowThatCloses,
                            APressMayRemoveItsOwnButton, ADestroyedWindowTakesAllItsWidgetsAlong,
                            ASheetBlocksItsParentUntilItIsClosed,
                            ASheetThatClosesMayBeFollowedByAnotherOne,
                            ADelegateMayShowItsWindowAgain, AParentThatClosesClosesItsSheetFirst,
                            AParentThatIsDestroyedClosesItsSheet);

}  // namespace quillmar
