// Conformance tests of window systems: custom views, which draw themselves and may wait
// for keys.

#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/key_equivalent.h"
#include "platform/widgets/button.h"
#include "platform/widgets/custom_view.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "tests/conformance/widgets_fixture.h"

namespace quillmar {

/// Records what happens to it.
class RecordingView final : public CustomView {
 public:
  Size naturalSize() const override { return {.width = 120, .height = 30}; }
  void draw(Canvas& canvas) const override {
    canvas.fill({.rect = {.origin = {}, .size = canvas.size()}, .radius = 3},
                {.color = CanvasColor::controlBackground, .alpha = 0.5});
    canvas.stroke({.rect = {.origin = {}, .size = canvas.size()}, .radius = 3},
                  {.color = CanvasColor::separator}, 1);
    canvas.drawText(text, {.x = 2, .y = 2}, Font{}, {.color = CanvasColor::label});
    drawnTexts.push_back(text);
    drawnSize = canvas.size();
    textSize = canvas.textSize(text, Font{});
  }
  std::string accessibilityValue() const override { return text; }
  bool accessibilityPressed() const override { return isPressed; }

  bool key(const KeyPress& press) override {
    keys.push_back(press);
    return usesKeys;
  }
  bool performKeyEquivalent(const KeyPress& press) override {
    keyEquivalents.push_back(press);
    return usesKeyEquivalents;
  }
  void focusLost() override { ++focusLosses; }

  void setText(std::string changed) {
    text = std::move(changed);
    redraw();
  }
  void setPressed(bool pressed) {
    isPressed = pressed;
    redraw();
  }

  std::string text = "Text";
  bool isPressed = false;
  bool usesKeys = false;
  bool usesKeyEquivalents = false;

  int mousePresses = 0;
  int focusLosses = 0;
  std::vector<KeyPress> keys;
  std::vector<KeyPress> keyEquivalents;
  mutable std::vector<std::string> drawnTexts;
  mutable Size drawnSize;
  mutable Size textSize;

 protected:
  void handleMouseDown() override {
    ++mousePresses;
    window()->makeFirstResponder(this);
  }
};

template <class Harness>
class CustomViewConformance : public WidgetsFixture<Harness> {
 protected:
  RecordingView& addView() { return this->stack->template add<RecordingView>(); }
};

TYPED_TEST_SUITE_P(CustomViewConformance);

// Drawing.

TYPED_TEST_P(CustomViewConformance, AViewIsDrawnInItsNaturalSize) {
  const RecordingView& view = this->addView();
  this->show();
  EXPECT_THAT(view.drawnTexts, testing::Contains("Text"));
  EXPECT_EQ(view.drawnSize, view.naturalSize());
}

TYPED_TEST_P(CustomViewConformance, AViewIsDrawnInItsStatedSize) {
  RecordingView& view = this->addView();
  view.setWidth(150);
  view.setHeight(40);
  this->show();
  EXPECT_EQ(view.drawnSize, (Size{.width = 150, .height = 40}));
}

TYPED_TEST_P(CustomViewConformance, AViewThatChangesIsDrawnAgain) {
  RecordingView& view = this->addView();
  this->show();
  view.setText("Other");
  this->harness.settle();
  EXPECT_EQ(view.drawnTexts.back(), "Other");
}

TYPED_TEST_P(CustomViewConformance, ALongerTextIsMeasuredWider) {
  RecordingView& view = this->addView();
  this->show();
  const Size before = view.textSize;
  EXPECT_GT(before.width, 0);
  EXPECT_GT(before.height, 0);
  view.setText("Text, text");
  this->harness.settle();
  EXPECT_GT(view.textSize.width, before.width);
  EXPECT_EQ(view.textSize.height, before.height);
}

// The mouse.

TYPED_TEST_P(CustomViewConformance, AClickReachesTheViewOnceAndMayGiveItTheFocus) {
  RecordingView& view = this->addView();
  this->show();
  this->harness.click(view);
  EXPECT_EQ(view.mousePresses, 1);
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &view);
  this->harness.click(view);
  EXPECT_EQ(view.mousePresses, 2);
}

TYPED_TEST_P(CustomViewConformance, AClickOnADisabledViewDoesNothing) {
  RecordingView& view = this->addView();
  view.setEnabled(false);
  this->show();
  this->harness.click(view);
  EXPECT_EQ(view.mousePresses, 0);
}

// Keys.

TYPED_TEST_P(CustomViewConformance, AFocusedViewGetsKeysOnceAndPassesOnThoseThatItDoesNotUse) {
  RecordingView& view = this->addView();
  this->addButton("Run").setKeyEquivalent(keys::returnKey);
  this->window->makeFirstResponder(&view);
  this->show();
  const KeyPress press = pressOf(keys::returnKey);
  this->harness.pressKey(*this->window, press);
  EXPECT_THAT(view.keys, testing::ElementsAre(press));
  EXPECT_THAT(this->pressed, testing::ElementsAre("Run"));
  view.usesKeys = true;
  this->harness.pressKey(*this->window, press);
  EXPECT_THAT(view.keys, testing::SizeIs(2));
  EXPECT_THAT(this->pressed, testing::SizeIs(1));
}

TYPED_TEST_P(CustomViewConformance, AKeyEquivalentComesBeforeAFieldTheDefaultButtonAndTab) {
  TextField& field = this->addField("");
  this->addButton("Run").setKeyEquivalent(keys::returnKey);
  RecordingView& view = this->addView();
  view.usesKeyEquivalents = true;
  this->window->makeFirstResponder(&field);
  this->show();
  const std::vector<KeyPress> presses = {
      pressOf(keys::returnKey),
      pressOf(keys::tab),
      pressOf(keys::escape),
      pressOf({.character = "a", .modifierMask = modifiers::control}),
      pressOf({.character = "\t", .modifierMask = modifiers::command}),
      pressOf({.character = "x", .modifierMask = 0})};
  for (const KeyPress& press : presses) this->harness.pressKey(*this->window, press);
  EXPECT_EQ(view.keyEquivalents, presses);
  EXPECT_THAT(view.keys, testing::IsEmpty());
  EXPECT_THAT(this->pressed, testing::IsEmpty());
  EXPECT_EQ(field.text(), "");
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &field);
}

TYPED_TEST_P(CustomViewConformance, AKeyEquivalentThatIsNotUsedDoesWhatItUsuallyDoes) {
  TextField& field = this->addField("");
  this->addButton("Run").setKeyEquivalent(keys::returnKey);
  const RecordingView& view = this->addView();
  this->window->makeFirstResponder(&field);
  this->show();
  this->harness.typeAtFocus(*this->window, "x");
  this->harness.pressKey(*this->window, pressOf(keys::returnKey));
  EXPECT_EQ(field.text(), "x");
  EXPECT_THAT(this->pressed, testing::ElementsAre("Run"));
  EXPECT_THAT(view.keyEquivalents, testing::Contains(pressOf(keys::returnKey)).Times(1));
}

TYPED_TEST_P(CustomViewConformance, ADisabledOrHiddenViewGetsNoKeyEquivalents) {
  RecordingView& disabled = this->addView();
  RecordingView& hidden = this->addView();
  disabled.setEnabled(false);
  hidden.setHidden(true);
  this->show();
  this->harness.pressKey(*this->window, pressOf(keys::returnKey));
  EXPECT_THAT(disabled.keyEquivalents, testing::IsEmpty());
  EXPECT_THAT(hidden.keyEquivalents, testing::IsEmpty());
}

// The focus.

TYPED_TEST_P(CustomViewConformance, AViewLosesTheFocusToAnotherView) {
  RecordingView& view = this->addView();
  const TextField& field = this->addField("");
  this->window->makeFirstResponder(&view);
  this->show();
  EXPECT_EQ(view.focusLosses, 0);
  this->harness.click(field);
  EXPECT_GE(view.focusLosses, 1);
}

TYPED_TEST_P(CustomViewConformance, AClickBesideAllViewsTakesTheFocusFromACustomViewOnly) {
  RecordingView& view = this->addView();
  TextField& field = this->addField("");
  this->window->makeFirstResponder(&view);
  this->show();
  this->harness.clickBesideViews(*this->window);
  EXPECT_GE(view.focusLosses, 1);
  EXPECT_EQ(this->window->firstResponder(), nullptr);
  this->window->makeFirstResponder(&field);
  this->harness.clickBesideViews(*this->window);
  EXPECT_EQ(this->window->firstResponder(), &field);
}

TYPED_TEST_P(CustomViewConformance, AViewLosesTheFocusWithItsWindowAndStaysFirstResponder) {
  RecordingView& view = this->addView();
  this->window->makeFirstResponder(&view);
  this->show();
  this->harness.switchToAnotherWindow(*this->window);
  EXPECT_GE(view.focusLosses, 1);
  EXPECT_EQ(this->window->firstResponder(), &view);
}

TYPED_TEST_P(CustomViewConformance, AViewThatIsDisabledOrHiddenLosesTheFocus) {
  RecordingView& view = this->addView();
  this->window->makeFirstResponder(&view);
  this->show();
  view.setEnabled(false);
  EXPECT_GE(view.focusLosses, 1);
  view.setEnabled(true);
  this->harness.settle();
  view.focusLosses = 0;
  this->stack->setHidden(true);
  EXPECT_GE(view.focusLosses, 1);
}

TYPED_TEST_P(CustomViewConformance, AViewLosesTheFocusToASheetAndWhenItsWindowCloses) {
  RecordingView& view = this->addView();
  this->window->makeFirstResponder(&view);
  this->show();
  Window sheet(this->harness.windows());
  ASSERT_TRUE(this->window->beginSheet(sheet, {}).ok());
  EXPECT_GE(view.focusLosses, 1);
  sheet.close();
  this->harness.settle();
  view.focusLosses = 0;
  this->window->close();
  EXPECT_GE(view.focusLosses, 1);
}

// Screen readers.

TYPED_TEST_P(CustomViewConformance, ScreenReadersAreToldTheNameTheValueAndWhetherItIsPressed) {
  RecordingView& view = this->addView();
  view.setAccessibilityRole(AccessibilityRole::button);
  view.setAccessibilityLabel("Shortcut");
  this->show();
  EXPECT_EQ(this->harness.nameForScreenReaders(view), "Shortcut");
  EXPECT_EQ(this->harness.valueForScreenReaders(view), "Text");
  EXPECT_FALSE(this->harness.isPressedForScreenReaders(view));
  view.setText("Other");
  view.setPressed(true);
  EXPECT_EQ(this->harness.valueForScreenReaders(view), "Other");
  EXPECT_TRUE(this->harness.isPressedForScreenReaders(view));
}

TYPED_TEST_P(CustomViewConformance, AKeyMayDestroyTheWindowOfItsView) {
  class Destroyer final : public CustomView {
   public:
    explicit Destroyer(std::unique_ptr<Window>& window) : window_(window) {}
    Size naturalSize() const override { return {.width = 10, .height = 10}; }
    void draw(Canvas& /*canvas*/) const override {}
    bool performKeyEquivalent(const KeyPress& /*press*/) override {
      window_.reset();
      return true;
    }

   private:
    std::unique_ptr<Window>& window_;
  };
  const int before = this->harness.widgetCount();
  this->stack->template add<Destroyer>(this->window);
  this->addView();
  this->show();
  this->harness.pressKey(*this->window, pressOf(keys::returnKey));
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
  EXPECT_EQ(this->harness.widgetCount(), before);
}

REGISTER_TYPED_TEST_SUITE_P(
    CustomViewConformance, AViewIsDrawnInItsNaturalSize, AViewIsDrawnInItsStatedSize,
    AViewThatChangesIsDrawnAgain, ALongerTextIsMeasuredWider,
    AClickReachesTheViewOnceAndMayGiveItTheFocus, AClickOnADisabledViewDoesNothing,
    AFocusedViewGetsKeysOnceAndPassesOnThoseThatItDoesNotUse,
    AKeyEquivalentComesBeforeAFieldTheDefaultButtonAndTab,
    AKeyEquivalentThatIsNotUsedDoesWhatItUsuallyDoes, ADisabledOrHiddenViewGetsNoKeyEquivalents,
    AViewLosesTheFocusToAnotherView, AClickBesideAllViewsTakesTheFocusFromACustomViewOnly,
    AViewLosesTheFocusWithItsWindowAndStaysFirstResponder, AViewThatIsDisabledOrHiddenLosesTheFocus,
    AViewLosesTheFocusToASheetAndWhenItsWindowCloses,
    ScreenReadersAreToldTheNameTheValueAndWhetherItIsPressed, AKeyMayDestroyTheWindowOfItsView);

}  // namespace quillmar
