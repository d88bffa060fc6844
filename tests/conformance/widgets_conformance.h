// What every window system promises of the widget model, in both directions: what the program sets
// is seen on the screen, what the user does to the widgets is heard by the model, once. A harness
// is a screen and the user in front of it:
//
//   WindowSystem& windows();
//   void settle();                              lets everything that was asked for happen
//
//   The user:
//   void click(const View& view);               with the pointer, in the middle
//   void typeText(const View& field, const std::string& text);
//                                               clicks into the field and types at its end
//   void typeAtFocus(Window& window, const std::string& text);
//   void pressKey(Window& window, const KeyEquivalent& key);
//   void closeByTitleBar(Window& window);
//
//   What the user sees:
//   bool isOnScreen(const Window& window);
//   std::string titleOnScreen(const Window& window);
//   bool isShown(const View& view);             it has a widget, and that is not hidden
//   bool isEnabledOnScreen(const View& view);
//   bool isDefaultOnScreen(const Button& button);
//   std::string textOnScreen(const View& view);
//   std::string placeholderOnScreen(const TextField& field);
//   std::string nameForScreenReaders(const View& view);
//   const View* focusedOnScreen(const Window& window);
//                                               of the views that Tab stops at
//   int widgetCount();                          of all windows

#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/button.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "platform/widgets/scroll_view.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/window.h"
#include "platform/window_system.h"

namespace quillmar {

class CountingWindowDelegate final : public WindowDelegate {
 public:
  void windowWillClose(Window& /*window*/) override { ++closes; }

  int closes = 0;
};

template <class Harness>
class WidgetsConformance : public testing::Test {
 protected:
  /// The window that most tests are about, and a column in it.
  WidgetsConformance()
      : window(std::make_unique<Window>(harness.windows())),
        stack(&window->template setContent<StackView>(Orientation::vertical)) {
    window->setTitle("Window");
    window->setContentSize({.width = 300, .height = 200});
    window->setDelegate(&delegate);
    stack->setAlignment(StackAlignment::leading);
  }

  Button& addButton(const std::string& title) {
    Button& button = stack->template add<Button>(title);
    button.setOnPress([this, title] { pressed.push_back(title); });
    return button;
  }
  TextField& addField(const std::string& text) {
    TextField& field = stack->template add<TextField>();
    field.setText(text);
    field.setOnEdit([this](const std::string& edited) { edits.push_back(edited); });
    return field;
  }

  void show() { show(*window); }
  void show(Window& shown) {
    ASSERT_TRUE(shown.show({}).ok());
    harness.settle();
  }

  Harness harness;
  CountingWindowDelegate delegate;
  std::unique_ptr<Window> window;
  StackView* stack;
  std::vector<std::string> pressed;
  std::vector<std::string> edits;
};

TYPED_TEST_SUITE_P(WidgetsConformance);

// Buttons.

TYPED_TEST_P(WidgetsConformance, AClickOnAButtonIsHeardOnce) {
  const Button& button = this->addButton("Save");
  this->show();
  EXPECT_EQ(this->harness.textOnScreen(button), "Save");
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save"));
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Save", "Save"));
}

TYPED_TEST_P(WidgetsConformance, AClickOnALinkIsHeardOnce) {
  Button& link = this->stack->template add<Button>("example.org", ButtonStyle::link);
  int presses = 0;
  link.setOnPress([&] { ++presses; });
  this->show();
  EXPECT_EQ(this->harness.textOnScreen(link), "example.org");
  this->harness.click(link);
  EXPECT_EQ(presses, 1);
}

TYPED_TEST_P(WidgetsConformance, ADisabledButtonIsGreyAndItsPressDoesNothing) {
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

TYPED_TEST_P(WidgetsConformance, AButtonInADisabledStackIsGreyAndItsPressDoesNothing) {
  const Button& button = this->addButton("Save");
  this->stack->setEnabled(false);
  this->show();
  EXPECT_FALSE(this->harness.isEnabledOnScreen(button));
  this->harness.click(button);
  EXPECT_THAT(this->pressed, testing::IsEmpty());
}

TYPED_TEST_P(WidgetsConformance, ReturnPressesTheDefaultButtonFromAField) {
  const TextField& field = this->addField("");
  this->addButton("Cancel").setKeyEquivalent(keys::escape);
  Button& run = this->addButton("Run");
  run.setKeyEquivalent(keys::returnKey);
  this->show();
  EXPECT_TRUE(this->harness.isDefaultOnScreen(run));
  this->harness.click(field);
  this->harness.pressKey(*this->window, keys::returnKey);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Run"));
  this->harness.pressKey(*this->window, keys::escape);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Run", "Cancel"));
}

TYPED_TEST_P(WidgetsConformance, ReturnDoesNothingToADisabledDefaultButton) {
  const TextField& field = this->addField("");
  Button& run = this->addButton("Run");
  run.setKeyEquivalent(keys::returnKey);
  run.setEnabled(false);
  this->show();
  this->harness.click(field);
  this->harness.pressKey(*this->window, keys::returnKey);
  EXPECT_THAT(this->pressed, testing::IsEmpty());
}

TYPED_TEST_P(WidgetsConformance, ReturnAndSpacePressTheFocusedButtonAndNotTheDefaultOne) {
  this->addButton("Run").setKeyEquivalent(keys::returnKey);
  Button& other = this->addButton("Other");
  this->window->makeFirstResponder(&other);
  this->show();
  EXPECT_FALSE(this->harness.isDefaultOnScreen(other));
  this->harness.pressKey(*this->window, keys::returnKey);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Other"));
  this->harness.pressKey(*this->window, keys::space);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Other", "Other"));
}

TYPED_TEST_P(WidgetsConformance, AnotherKeyPressesTheButtonThatNamesIt) {
  const TextField& field = this->addField("");
  Button& button = this->addButton("Find");
  button.setKeyEquivalent(KeyEquivalent{.character = "f", .modifierMask = modifiers::control});
  this->show();
  this->harness.click(field);
  this->harness.pressKey(*this->window, *button.keyEquivalent());
  EXPECT_THAT(this->pressed, testing::ElementsAre("Find"));
  this->harness.pressKey(*this->window, {.character = "g", .modifierMask = modifiers::control});
  EXPECT_THAT(this->pressed, testing::SizeIs(1));
}

// Fields.

TYPED_TEST_P(WidgetsConformance, TypedTextReachesTheModelAndItsHandler) {
  const TextField& field = this->addField("a");
  this->show();
  this->harness.typeText(field, "bc");
  EXPECT_EQ(field.text(), "abc");
  EXPECT_EQ(this->harness.textOnScreen(field), "abc");
  ASSERT_THAT(this->edits, testing::Not(testing::IsEmpty()));
  EXPECT_EQ(this->edits.back(), "abc");
}

TYPED_TEST_P(WidgetsConformance, ATextThatTheProgramSetsIsShownAndIsNoEdit) {
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

TYPED_TEST_P(WidgetsConformance, AHandlerMayCorrectWhatIsTyped) {
  TextField& field = this->stack->template add<TextField>();
  field.setOnEdit([&](const std::string& text) { field.setText("<" + text + ">"); });
  this->show();
  this->harness.typeText(field, "x");
  this->harness.settle();
  EXPECT_EQ(field.text(), "<x>");
  EXPECT_EQ(this->harness.textOnScreen(field), "<x>");
}

TYPED_TEST_P(WidgetsConformance, AReadOnlyFieldKeepsItsText) {
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

TYPED_TEST_P(WidgetsConformance, ADisabledFieldKeepsItsText) {
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

TYPED_TEST_P(WidgetsConformance, TextsAreShownToTheLetter) {
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

TYPED_TEST_P(WidgetsConformance, TextsThatChangeAreShown) {
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

TYPED_TEST_P(WidgetsConformance, AHiddenViewIsNotOnTheScreenUntilItIsShown) {
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

TYPED_TEST_P(WidgetsConformance, AScreenReaderSaysTheLabelOfAViewOrItsOwnText) {
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

TYPED_TEST_P(WidgetsConformance, AViewAddedToAShownStackIsShownAndWorks) {
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

TYPED_TEST_P(WidgetsConformance, ARemovedViewTakesItsWidgetsAlong) {
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

TYPED_TEST_P(WidgetsConformance, OtherContentTakesThePlaceOfTheOld) {
  this->addButton("Old");
  this->show();
  const Label& label = this->window->template setContent<Label>("New");
  this->harness.settle();
  EXPECT_TRUE(this->harness.isShown(label));
  EXPECT_EQ(this->harness.textOnScreen(label), "New");
}

// The focus.

TYPED_TEST_P(WidgetsConformance, TheFirstResponderHasTheFocusAndTakesWhatIsTyped) {
  const TextField& first = this->addField("");
  TextField& second = this->addField("");
  this->window->makeFirstResponder(&second);
  this->show();
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &second);
  this->harness.typeAtFocus(*this->window, "x");
  EXPECT_EQ(first.text(), "");
  EXPECT_EQ(second.text(), "x");
}

TYPED_TEST_P(WidgetsConformance, TheProgramMovesTheFocus) {
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

TYPED_TEST_P(WidgetsConformance, WithoutAFirstResponderTheDefaultButtonHasTheFocus) {
  this->addField("");
  Button& run = this->addButton("Run");
  run.setKeyEquivalent(keys::returnKey);
  this->show();
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &run);
  EXPECT_EQ(this->window->firstResponder(), &run);
}

TYPED_TEST_P(WidgetsConformance, WithoutADefaultButtonNothingHasTheFocus) {
  this->addField("");
  this->show();
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), nullptr);
  EXPECT_EQ(this->window->firstResponder(), nullptr);
}

TYPED_TEST_P(WidgetsConformance, AClickIntoAFieldMakesItTheFirstResponder) {
  TextField& first = this->addField("");
  const TextField& second = this->addField("");
  this->window->makeFirstResponder(&first);
  this->show();
  this->harness.click(second);
  EXPECT_EQ(this->window->firstResponder(), &second);
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), &second);
}

TYPED_TEST_P(WidgetsConformance, TabGoesThroughWhatTakesInputAndRound) {
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
    this->harness.pressKey(*this->window, keys::tab);
    stops.push_back(this->harness.focusedOnScreen(*this->window));
    EXPECT_EQ(this->window->firstResponder(), stops.back());
  }
  EXPECT_THAT(stops, testing::ElementsAre(&button, &link, &field, &button));
  stops.clear();
  for (int i = 0; i < 3; ++i) {
    this->harness.pressKey(*this->window, keys::backTab);
    stops.push_back(this->harness.focusedOnScreen(*this->window));
  }
  EXPECT_THAT(stops, testing::ElementsAre(&field, &link, &button));
}

TYPED_TEST_P(WidgetsConformance, AFirstResponderHasNoFocusWhileItIsDisabled) {
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

TYPED_TEST_P(WidgetsConformance, AFirstResponderThatIsRemovedLeavesNone) {
  TextField& field = this->addField("");
  this->addField("");
  this->window->makeFirstResponder(&field);
  this->show();
  this->stack->remove(field);
  this->harness.settle();
  EXPECT_EQ(this->window->firstResponder(), nullptr);
  EXPECT_EQ(this->harness.focusedOnScreen(*this->window), nullptr);
}

// Closing.

TYPED_TEST_P(WidgetsConformance, TheTitleBarClosesTheWindowAndTellsTheDelegateOnce) {
  this->show();
  EXPECT_TRUE(this->harness.isOnScreen(*this->window));
  this->harness.closeByTitleBar(*this->window);
  this->harness.settle();
  EXPECT_FALSE(this->window->visible());
  EXPECT_FALSE(this->harness.isOnScreen(*this->window));
  EXPECT_EQ(this->delegate.closes, 1);
}

TYPED_TEST_P(WidgetsConformance, AWindowThatTheProgramClosesTellsTheDelegateOnce) {
  this->show();
  this->window->close();
  this->harness.settle();
  EXPECT_FALSE(this->harness.isOnScreen(*this->window));
  EXPECT_EQ(this->delegate.closes, 1);
}

TYPED_TEST_P(WidgetsConformance, EscapeClosesOnlyAWindowThatWantsIt) {
  this->addField("");
  this->show();
  this->harness.pressKey(*this->window, keys::escape);
  EXPECT_TRUE(this->window->visible());
  this->window->setClosesOnEscape(true);
  this->harness.pressKey(*this->window, keys::escape);
  this->harness.settle();
  EXPECT_FALSE(this->harness.isOnScreen(*this->window));
  EXPECT_EQ(this->delegate.closes, 1);
}

TYPED_TEST_P(WidgetsConformance, AClosedWindowIsShownAgainAsItWas) {
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

TYPED_TEST_P(WidgetsConformance, APressMayCloseItsOwnWindow) {
  Button& button = this->addButton("Close");
  button.setOnPress([this] { this->window->close(); });
  this->show();
  this->harness.click(button);
  this->harness.settle();
  EXPECT_FALSE(this->harness.isOnScreen(*this->window));
  EXPECT_EQ(this->delegate.closes, 1);
}

TYPED_TEST_P(WidgetsConformance, APressMayDestroyItsOwnWindow) {
  const int before = this->harness.widgetCount();
  Button& button = this->addButton("Close");
  button.setOnPress([this] { this->window.reset(); });
  this->show();
  this->harness.click(button);
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
  EXPECT_EQ(this->harness.widgetCount(), before);
}

TYPED_TEST_P(WidgetsConformance, AKeyMayDestroyItsOwnWindow) {
  const int before = this->harness.widgetCount();
  TextField& field = this->addField("");
  Button& button = this->addButton("Run");
  button.setKeyEquivalent(keys::returnKey);
  button.setOnPress([this] { this->window.reset(); });
  this->window->makeFirstResponder(&field);
  this->show();
  this->harness.pressKey(*this->window, keys::returnKey);
  this->harness.settle();
  EXPECT_EQ(this->window, nullptr);
  EXPECT_EQ(this->harness.widgetCount(), before);
}

TYPED_TEST_P(WidgetsConformance, AKeyOnAFocusedButtonMayDestroyItsOwnWindow) {
  for (const KeyEquivalent& key : {keys::returnKey, keys::space}) {
    auto inner = std::make_unique<Window>(this->harness.windows());
    auto& button = inner->template setContent<Button>("Run");
    button.setOnPress([&] { inner.reset(); });
    inner->makeFirstResponder(&button);
    this->show(*inner);
    this->harness.pressKey(*inner, key);
    this->harness.settle();
    EXPECT_EQ(inner, nullptr);
  }
}

TYPED_TEST_P(WidgetsConformance, AnEditMayDestroyItsOwnWindow) {
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

TYPED_TEST_P(WidgetsConformance, ADelegateMayDestroyTheWindowThatCloses) {
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

TYPED_TEST_P(WidgetsConformance, APressMayRemoveItsOwnButton) {
  Button& button = this->addButton("Remove");
  const Button& stays = this->addButton("Stays");
  button.setOnPress([&] { this->stack->remove(button); });
  this->show();
  this->harness.click(button);
  this->harness.settle();
  this->harness.click(stays);
  EXPECT_THAT(this->pressed, testing::ElementsAre("Stays"));
}

TYPED_TEST_P(WidgetsConformance, ADestroyedWindowTakesAllItsWidgetsAlong) {
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

TYPED_TEST_P(WidgetsConformance, ASheetBlocksItsParentUntilItIsClosed) {
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
  this->harness.pressKey(*this->window, keys::returnKey);
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

TYPED_TEST_P(WidgetsConformance, AParentThatIsDestroyedLeavesItsSheetAlive) {
  this->show();
  Window sheet(this->harness.windows());
  int presses = 0;
  auto& done = sheet.template setContent<Button>("Done");
  done.setOnPress([&] { ++presses; });
  ASSERT_TRUE(this->window->beginSheet(sheet, {}).ok());
  this->harness.settle();
  this->window.reset();
  this->harness.settle();
  EXPECT_TRUE(this->harness.isOnScreen(sheet));
  this->harness.click(done);
  EXPECT_EQ(presses, 1);
}

REGISTER_TYPED_TEST_SUITE_P(
    WidgetsConformance, AClickOnAButtonIsHeardOnce, AClickOnALinkIsHeardOnce,
    ADisabledButtonIsGreyAndItsPressDoesNothing,
    AButtonInADisabledStackIsGreyAndItsPressDoesNothing, ReturnPressesTheDefaultButtonFromAField,
    ReturnDoesNothingToADisabledDefaultButton,
    ReturnAndSpacePressTheFocusedButtonAndNotTheDefaultOne, AnotherKeyPressesTheButtonThatNamesIt,
    TypedTextReachesTheModelAndItsHandler, ATextThatTheProgramSetsIsShownAndIsNoEdit,
    AHandlerMayCorrectWhatIsTyped, AReadOnlyFieldKeepsItsText, ADisabledFieldKeepsItsText,
    TextsAreShownToTheLetter, TextsThatChangeAreShown, AHiddenViewIsNotOnTheScreenUntilItIsShown,
    AScreenReaderSaysTheLabelOfAViewOrItsOwnText, AViewAddedToAShownStackIsShownAndWorks,
    ARemovedViewTakesItsWidgetsAlong, OtherContentTakesThePlaceOfTheOld,
    TheFirstResponderHasTheFocusAndTakesWhatIsTyped, TheProgramMovesTheFocus,
    WithoutAFirstResponderTheDefaultButtonHasTheFocus, WithoutADefaultButtonNothingHasTheFocus,
    AClickIntoAFieldMakesItTheFirstResponder, TabGoesThroughWhatTakesInputAndRound,
    AFirstResponderHasNoFocusWhileItIsDisabled, AFirstResponderThatIsRemovedLeavesNone,
    TheTitleBarClosesTheWindowAndTellsTheDelegateOnce,
    AWindowThatTheProgramClosesTellsTheDelegateOnce, EscapeClosesOnlyAWindowThatWantsIt,
    AClosedWindowIsShownAgainAsItWas, APressMayCloseItsOwnWindow, APressMayDestroyItsOwnWindow,
    AKeyMayDestroyItsOwnWindow, AKeyOnAFocusedButtonMayDestroyItsOwnWindow,
    AnEditMayDestroyItsOwnWindow, ADelegateMayDestroyTheWindowThatCloses,
    APressMayRemoveItsOwnButton, ADestroyedWindowTakesAllItsWidgetsAlong,
    ASheetBlocksItsParentUntilItIsClosed, AParentThatIsDestroyedLeavesItsSheetAlive);

}  // namespace quillmar
