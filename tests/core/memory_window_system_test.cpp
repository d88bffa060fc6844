#include "platform/memory/memory_window_system.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_task_queues.h"
#include "tests/conformance/settings_window_conformance.h"
#include "tests/conformance/widgets_alert_conformance.h"
#include "tests/conformance/widgets_choices_conformance.h"
#include "tests/conformance/widgets_closing_conformance.h"
#include "tests/conformance/widgets_completions_conformance.h"
#include "tests/conformance/widgets_controls_conformance.h"
#include "tests/conformance/widgets_custom_view_conformance.h"
#include "tests/conformance/widgets_drops_conformance.h"
#include "tests/conformance/widgets_keyboard_conformance.h"
#include "tests/conformance/widgets_outline_conformance.h"
#include "tests/conformance/widgets_panels_conformance.h"
#include "tests/conformance/widgets_tabs_conformance.h"
#include "tests/conformance/widgets_text_view_conformance.h"
#include "tests/conformance/widgets_waiting_conformance.h"

namespace quillmar {
namespace {

/// The user does to the model what a real widget would.
class MemoryWindowsHarness {
 public:
  static constexpr int randomActions = 10000;

  WindowSystem& windows() { return screen_; }
  void settle() {}

  void click(const View& view) {
    View& clicked = const_cast<View&>(view);
    if (view.acceptsFirstResponder()) view.window()->focus(&clicked);
    // Any of these may destroy the view.
    if (auto* const custom = dynamic_cast<CustomView*>(&clicked)) return custom->mouseDown();
    if (auto* const button = dynamic_cast<Button*>(&clicked)) return button->press();
    if (auto* const checkbox = dynamic_cast<Checkbox*>(&clicked)) checkbox->toggle();
  }
  void choose(const PopUpButton& popUp, std::size_t index) {
    click(popUp);
    const_cast<PopUpButton&>(popUp).select(index);
  }
  void typeText(const View& field, const std::string& text) {
    click(field);
    typeAtFocus(*field.window(), text);
  }
  void clickBesideViews(Window& window) { window.mouseDown(); }
  void switchToAnotherWindow(Window& window) { window.keyboardLost(); }
  void clickCompletion(const TextField& field, std::size_t index) {
    const_cast<TextField&>(field).acceptCompletion(index);
  }
  void clickTab(const TabView& tabView, std::size_t index) {
    const_cast<TabView&>(tabView).select(index);
  }
  void clickRow(const OutlineView& outline, std::size_t index) {
    click(outline);
    changeable(outline).select(index);
  }
  void doubleClickRow(const OutlineView& outline, std::size_t index) {
    click(outline);
    changeable(outline).doubleClick(index);
  }
  void clickDisclosure(const OutlineView& outline, std::size_t index) {
    if (outline.isExpanded(index)) {
      changeable(outline).collapse(index);
    } else {
      changeable(outline).expand(index);
    }
  }
  void clickCheckbox(const OutlineView& outline, std::size_t index) {
    const OutlineRow row = outline.value(index);
    changeable(outline).toggle(index, row.checkbox()->identifier);
  }
  void typeAtFocus(Window& window, const std::string& text) {
    View* const focused = screen_.focused(window);
    if (auto* const field = dynamic_cast<TextField*>(focused))
      return field->type(field->text() + text);
    if (auto* const view = dynamic_cast<TextView*>(focused)) view->type(view->text() + text);
  }
  void pressKey(Window& window, const KeyPress& press) { window.key(press); }
  void closeByTitleBar(Window& window) { window.performClose(); }
  bool dragFiles(const View& view, const std::vector<std::string>& files) {
    return const_cast<View&>(view).dragFiles(files);
  }
  bool dropFiles(const View& view, const std::vector<std::string>& files) {
    return const_cast<View&>(view).dropFiles(files);
  }
  void chooseInPanel(Window& parent, const std::string& path) { endPanel(parent, path); }
  void cancelPanel(Window& parent) { endPanel(parent, std::nullopt); }

  bool isOnScreen(const Window& window) const {
    return testing::Value(screen_.windows(), testing::Contains(&window));
  }
  std::string titleOnScreen(const Window& window) const { return screen_.titleOnScreen(window); }
  std::string panelTitleOnScreen(const Window& parent) const {
    const MemoryFilePanel* const panel = panelOf(parent);
    if (panel == nullptr) return "";
    return panel->open ? panel->open->title : panel->save->title;
  }
  bool isResizableOnScreen(const Window& window) const { return screen_.resizableOnScreen(window); }
  Size minimumSizeOnScreen(const Window& window) const {
    return screen_.minimumSizeOnScreen(window);
  }
  bool isShown(const View& view) const {
    return everyWidgetAround(view, [](const MemoryWidget& widget) { return !widget.hidden; });
  }
  bool isEnabledOnScreen(const View& view) const {
    return everyWidgetAround(view, [](const MemoryWidget& widget) { return widget.enabled; });
  }
  bool isDefaultOnScreen(const Button& button) const {
    return screen_.widget(button)->isDefaultButton;
  }
  ControlState stateOnScreen(const Checkbox& checkbox) const {
    return screen_.widget(checkbox)->state;
  }
  std::vector<std::string> completionsOnScreen(const TextField& field) const {
    const MemoryWidget& shown = *screen_.widget(field);
    std::vector<std::string> texts;
    for (const TextCompletion& completion : shown.completions) texts.push_back(completion.text);
    if (const auto selected = shown.selectedCompletion) {
      texts[*selected] = "[" + texts[*selected] + "]";
    }
    return texts;
  }
  std::vector<std::string> tabsOnScreen(const TabView& tabView) const {
    const MemoryWidget& shown = *screen_.widget(tabView);
    std::vector<std::string> tabs = shown.tabs;
    tabs[shown.selectedTab] = "[" + tabs[shown.selectedTab] + "]";
    return tabs;
  }
  std::vector<std::string> rowsOnScreen(const OutlineView& outline) const {
    std::vector<std::string> rows;
    for (std::size_t i = 0; i < outline.rowCount(); ++i) {
      const std::string indentation(2 * static_cast<std::size_t>(outline.level(i)), ' ');
      rows.push_back(indentation + outline.value(i).spokenText());
    }
    return rows;
  }
  std::optional<std::size_t> selectedRowOnScreen(const OutlineView& outline) const {
    return outline.selectedIndex();
  }
  ControlState rowStateOnScreen(const OutlineView& outline, std::size_t index) const {
    const OutlineRow row = outline.value(index);
    return row.checkbox()->state;
  }
  std::string textOnScreen(const View& view) const { return screen_.widget(view)->text; }
  std::string placeholderOnScreen(const TextField& field) const {
    return screen_.widget(field)->placeholder;
  }
  std::string nameForScreenReaders(const View& view) const {
    return screen_.widget(view)->accessibilityLabel;
  }
  std::string valueForScreenReaders(const View& view) const {
    return screen_.widget(view)->accessibilityValue;
  }
  bool isPressedForScreenReaders(const View& view) const {
    return screen_.widget(view)->accessibilityPressed;
  }
  const View* focusedOnScreen(const Window& window) const { return screen_.focused(window); }
  int widgetCount() const { return static_cast<int>(screen_.widgetCount()); }

 private:
  const MemoryFilePanel* panelOf(const Window& parent) const {
    for (const MemoryFilePanel* const panel : screen_.filePanels()) {
      if (panel->parent == &parent) return panel;
    }
    return nullptr;
  }
  void endPanel(const Window& parent, const std::optional<std::string>& path) {
    // A copy, because the function destroys the panel.
    const auto end = panelOf(parent)->end;
    end(path);
  }
  static OutlineView& changeable(const OutlineView& outline) {
    return const_cast<OutlineView&>(outline);
  }
  template <class Condition>
  bool everyWidgetAround(const View& view, const Condition& holds) const {
    for (const View* at = &view; at != nullptr; at = at->superview()) {
      if (screen_.widget(*at) == nullptr || !holds(*screen_.widget(*at))) return false;
    }
    return true;
  }

  MemoryTaskQueue queue_;
  MemoryWindowSystem screen_{queue_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, AlertConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, CompletionsConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, DropsConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, PanelsConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, WaitingConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, SettingsWindowConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, WidgetChoicesConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, WidgetControlsConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, WidgetKeyboardConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, OutlineConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, TabViewConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, TextViewConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, WidgetClosingConformance, MemoryWindowsHarness);
INSTANTIATE_TYPED_TEST_SUITE_P(Memory, CustomViewConformance, MemoryWindowsHarness);

}  // namespace
}  // namespace quillmar
