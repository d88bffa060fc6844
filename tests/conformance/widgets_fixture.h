// What the conformance tests of window systems (widgets_*_conformance.h) have in common. They test
// both directions: what the program sets appears on the screen, and each action of the user reaches
// the model once. A harness stands for a screen and its user:
//
//   WindowSystem& windows();
//   void settle();                              completes all requested changes
//
//   The user:
//   void click(const View& view);               with the pointer, in the middle
//   void clickBesideViews(Window& window);      into an empty corner
//   void switchToAnotherWindow(Window& window);
//   void typeText(const View& field, const std::string& text);
//                                               clicks into the field and types at its end
//   void choose(const PopUpButton& popUp, std::size_t index);
//                                               opens the menu and clicks on the title
//   void clickCompletion(const TextField& field, std::size_t index);
//   void clickTab(const TabView& tabView, std::size_t index);
//   void clickRow(const OutlineView& outline, std::size_t index);
//   void doubleClickRow(const OutlineView& outline, std::size_t index);
//   void clickDisclosure(const OutlineView& outline, std::size_t index);
//                                               beside the row, where it can be expanded
//   void clickCheckbox(const OutlineView& outline, std::size_t index);
//   void typeAtFocus(Window& window, const std::string& text);
//   void pressKey(Window& window, const KeyPress& press);
//   void closeByTitleBar(Window& window);
//   bool dragFiles(const View& view, const std::vector<std::string>& files);
//                                               over the view; true if the pointer shows that it
//                                               would take them
//   bool dropFiles(const View& view, const std::vector<std::string>& files);
//                                               true if the view took them
//   void chooseInPanel(Window& parent, const std::string& path);
//   void cancelPanel(Window& parent);
//
//   What the user sees:
//   bool isOnScreen(const Window& window);
//   std::string titleOnScreen(const Window& window);
//   std::string panelTitleOnScreen(const Window& parent);   empty if no panel is open
//   bool isResizableOnScreen(const Window& window);
//   Size minimumSizeOnScreen(const Window& window);   of a resizable window
//   bool isShown(const View& view);             it has a widget, and that is not hidden
//   bool isEnabledOnScreen(const View& view);
//   bool isDefaultOnScreen(const Button& button);
//   ControlState stateOnScreen(const Checkbox& checkbox);
//   std::vector<std::string> completionsOnScreen(const TextField& field);
//                                               texts, the selected one in brackets; empty if the
//                                               list is closed
//   std::vector<std::string> tabsOnScreen(const TabView& tabView);
//                                               labels, the selected one in brackets
//   std::vector<std::string> rowsOnScreen(const OutlineView& outline);
//                                               spoken texts, indented by two blanks for a level
//   std::optional<std::size_t> selectedRowOnScreen(const OutlineView& outline);
//   ControlState rowStateOnScreen(const OutlineView& outline, std::size_t index);
//   std::string textOnScreen(const View& view);
//   std::string placeholderOnScreen(const TextField& field);
//   std::string nameForScreenReaders(const View& view);
//   std::string valueForScreenReaders(const View& view);
//   bool isPressedForScreenReaders(const View& view);
//   const View* focusedOnScreen(const Window& window);
//                                               of the views that Tab stops at
//   int widgetCount();                          of all windows

#pragma once

#include <memory>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/widgets/button.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/window.h"
#include "platform/window_system.h"
#include "tests/key_presses.h"

namespace quillmar {

class CountingWindowDelegate final : public WindowDelegate {
 public:
  void windowWillClose(Window& /*window*/) override { ++closes; }

  int closes = 0;
};

template <class Harness>
class WidgetsFixture : public testing::Test {
 protected:
  /// The window that most tests are about, and a column in it.
  WidgetsFixture()
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

}  // namespace quillmar
