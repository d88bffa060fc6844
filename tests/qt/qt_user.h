// A user in front of windows that Qt shows: real events to real widgets, and a look at those.

#pragma once

#include <functional>
#include <string>

#include "platform/key_press.h"
#include "platform/memory/memory_task_queues.h"
#include "platform/qt/windows/qt_window_system.h"
#include "platform/widgets/button.h"
#include "platform/widgets/checkbox.h"
#include "platform/widgets/outline_view.h"
#include "platform/widgets/pop_up_button.h"
#include "platform/widgets/tab_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/window.h"

class QFileDialog;
class QListView;
class QMimeData;
class QString;
class QWidget;

namespace quillmar {

/// The key equivalent of undo in text fields.
inline const KeyEquivalent undo{"z", modifiers::control};

/// Handles events until the condition holds. False, and the test fails, when it still does not
/// after a minute.
bool handleEventsUntil(const std::function<bool()>& done);

/// Handles everything that is ready now, what was left to be deleted included.
void handleReadyEvents();

/// The widgets of a window and a view that are on the screen.
QWidget& widgetOf(const Window& window);
QWidget& widgetOf(const View& view);

/// The list of completions below the field; null if it is closed.
QListView* completionListOf(const TextField& field);

/// The open panel of the window; null if there is none.
QFileDialog* panelOf(const Window& parent);

/// As a file manager offers the files.
void setFiles(QMimeData& data, const std::vector<std::string>& files);

/// Moves the pointer over the view with the data, as another program that offers to copy or move
/// it. True if the pointer shows that the view would take it.
bool dragOver(const View& view, QMimeData& data);

/// Releases the button there. True if the view took the data.
bool dropOn(const View& view, QMimeData& data);

/// What is left of a text's mnemonics when it is drawn.
QString withoutMnemonics(const QString& text);

class QtUser {
 public:
  static constexpr int randomActions = 1000;

  /// Nothing of other tests is left on the screen.
  QtUser() { handleReadyEvents(); }

  WindowSystem& windows() { return windows_; }
  void settle();

  void click(const View& view);
  void clickBesideViews(Window& window);
  void switchToAnotherWindow(Window& window);
  void typeText(const View& field, const std::string& text);
  void choose(const PopUpButton& popUp, std::size_t index);
  void clickCompletion(const TextField& field, std::size_t index);
  void clickTab(const TabView& tabView, std::size_t index);
  void clickRow(const OutlineView& outline, std::size_t index);
  void doubleClickRow(const OutlineView& outline, std::size_t index);
  void clickDisclosure(const OutlineView& outline, std::size_t index);
  void clickCheckbox(const OutlineView& outline, std::size_t index);
  void typeAtFocus(Window& window, const std::string& text);
  void pressKey(Window& window, const KeyPress& press);
  void closeByTitleBar(Window& window);
  bool dragFiles(const View& view, const std::vector<std::string>& files);
  bool dropFiles(const View& view, const std::vector<std::string>& files);
  void chooseInPanel(Window& parent, const std::string& path);
  void cancelPanel(Window& parent);

  bool isOnScreen(const Window& window) const;
  std::string titleOnScreen(const Window& window) const;
  std::string panelTitleOnScreen(const Window& parent) const;
  bool isResizableOnScreen(const Window& window) const;
  Size minimumSizeOnScreen(const Window& window) const;
  bool isShown(const View& view) const;
  bool isEnabledOnScreen(const View& view) const;
  bool isDefaultOnScreen(const Button& button) const;
  ControlState stateOnScreen(const Checkbox& checkbox) const;
  std::vector<std::string> completionsOnScreen(const TextField& field) const;
  std::vector<std::string> tabsOnScreen(const TabView& tabView) const;
  std::vector<std::string> rowsOnScreen(const OutlineView& outline) const;
  std::optional<std::size_t> selectedRowOnScreen(const OutlineView& outline) const;
  ControlState rowStateOnScreen(const OutlineView& outline, std::size_t index) const;
  std::string textOnScreen(const View& view) const;
  std::string placeholderOnScreen(const TextField& field) const;
  std::string nameForScreenReaders(const View& view) const;
  std::string valueForScreenReaders(const View& view) const;
  bool isPressedForScreenReaders(const View& view) const;
  const View* focusedOnScreen(const Window& window) const;
  int widgetCount() const;

 private:
  MemoryTaskQueues queues_;
  QtWindowSystem windows_{queues_.mainQueue()};
};

}  // namespace quillmar
