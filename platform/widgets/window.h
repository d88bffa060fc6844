// A window: a title and one tree of views.
//
// A window is built without a screen. Its window system creates its peer when it is first shown. A
// closed window keeps its content and can be shown again. A callback may close or destroy its own
// window. Main thread.

#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/application.h"
#include "platform/key_press.h"
#include "platform/result.h"
#include "platform/widgets/alert.h"
#include "platform/widgets/file_panel.h"
#include "platform/widgets/geometry.h"
#include "platform/widgets/view.h"
#include "platform/widgets/view_peer.h"

namespace quillmar {

class AlertSheet;
class Button;
class Window;
class WindowSystem;

enum class WindowLevel {
  normal,
  /// Above the normal windows of all programs.
  floating,
};

class WindowDelegate {
 public:
  virtual ~WindowDelegate() = default;

  /// Called when the user or the program closes the window, after it is hidden and detached from
  /// its sheet parent. The delegate may show or destroy the window, and may begin another sheet.
  virtual void windowWillClose(Window& window) = 0;
};

class Window {
 public:
  /// The window system is not owned and must outlive the window.
  explicit Window(WindowSystem& windowSystem);
  Window(const Window&) = delete;
  Window& operator=(const Window&) = delete;
  ~Window();

  // State to show.

  const std::string& title() const { return title_; }
  void setTitle(std::string title) { set(title_, std::move(title)); }

  /// The minimum size of the content. The window grows if its content needs more space, up to the
  /// size of the screen. For a resizable window, this is the initial size.
  const Size& contentSize() const { return contentSize_; }
  void setContentSize(const Size& size) { set(contentSize_, size); }

  /// If true, the user can resize, minimize and maximize the window.
  bool resizable() const { return resizable_; }
  void setResizable(bool resizable) { set(resizable_, resizable); }

  /// The smallest size that the user can choose. The window is never smaller than its content
  /// needs.
  const Size& minimumContentSize() const { return minimumContentSize_; }
  void setMinimumContentSize(const Size& size) { set(minimumContentSize_, size); }

  WindowLevel level() const { return level_; }
  void setLevel(WindowLevel level) { set(level_, level); }

  /// If true, Escape closes the window, unless it has a cancel button.
  bool closesOnEscape() const { return closesOnEscape_; }
  void setClosesOnEscape(bool closes) { closesOnEscape_ = closes; }

  /// If true, the window ignores clicks right after it appears, before the user can have read it.
  /// For windows that ask a question.
  bool ignoresEarlyClicks() const { return ignoresEarlyClicks_; }
  void setIgnoresEarlyClicks(bool ignores) { set(ignoresEarlyClicks_, ignores); }

  View* contentView() const { return contentView_.get(); }

  /// Creates a view and makes it the content; destroys the previous content.
  template <class Kind, class... Arguments>
  Kind& setContent(Arguments&&... arguments) {
    auto view = std::make_unique<Kind>(std::forward<Arguments>(arguments)...);
    Kind& content = *view;
    setContentView(std::move(view));
    return content;
  }

  /// Not owned; null for none.
  void setDelegate(WindowDelegate* delegate) { delegate_ = delegate; }

  // On the screen.

  /// Makes the next show() centre the window on the screen, a little lower if it would cover
  /// another window of the program. Some desktops do not let programs place their windows.
  void center() { centerRequested_ = true; }

  /// Shows the window, raises it and gives it the focus. The first time, the default button becomes
  /// the first responder if there is none. Fails if there is no display or no window system.
  Result<void> show(const Activation& activation);

  /// Closes the window's sheet, then hides the window. Does nothing if the window is not visible.
  void close();

  bool visible() const { return visible_; }

  /// Shows `sheet` above this window, which accepts no input until the sheet is closed. The sheet
  /// is not owned. It is closed when this window is closed or destroyed. Fails if another sheet is
  /// open or this window is closing.
  Result<void> beginSheet(Window& sheet, const Activation& activation);
  Window* sheet() const { return sheet_; }
  /// The window whose sheet this window is; null if it is not an open sheet.
  Window* sheetParent() const { return sheetParent_; }

  /// Shows the alert as a sheet of this window. `onAnswer` gets the index of the button that the
  /// user pressed, after the sheet has closed. It is not called if the sheet closes in another way,
  /// for example with this window. Precondition: no sheet is open.
  Result<void> beginAlert(Alert alert, const Activation& activation,
                          std::function<void(std::size_t button)> onAnswer = {});

  /// Shows a panel in which the user chooses a file. This window accepts no input until the panel
  /// has closed. `onChoose` gets the absolute path of the file, after the panel has closed; it is
  /// not called if the user cancels, or if this window is closed or destroyed. Fails if a sheet or
  /// panel is open or this window is not visible.
  Result<void> beginOpenPanel(const OpenPanel& panel,
                              std::function<void(const std::string& path)> onChoose);
  Result<void> beginSavePanel(const SavePanel& panel,
                              std::function<void(const std::string& path)> onChoose);
  /// Null if no panel is open.
  FilePanelPeer* filePanel() const { return filePanel_.get(); }

  /// Calls the task as soon as the window has no open sheet or panel: at once, or after the open
  /// one has closed, unless its handler opens another. Waiting tasks are called in their order, and
  /// dropped when the window is closed or destroyed. Does nothing if the window is not visible or
  /// is closing.
  void whenFree(std::function<void()> task);

  View* firstResponder() const { return firstResponder_; }
  /// `view` must belong to this window; null for no first responder.
  void makeFirstResponder(View* view);

  /// The first button whose key equivalent is Return or Escape, even if it does not accept input
  /// now; null if there is none.
  Button* defaultButton() const;
  Button* cancelButton() const;

  // Events from the user.

  /// True if the window accepts input: it is open, and it has no open sheet or panel.
  bool takesInput() const { return visible_ && isFree(); }

  /// The user pressed a key in the window: performKeyEquivalent(), then keyDown(). Returns true if
  /// the key was handled.
  bool key(const KeyPress& press);

  /// The first step of key(), before any view uses the key: offers it to all views that take input.
  bool performKeyEquivalent(const KeyPress& press);

  /// The second step of key(): asks the first responder. Otherwise the key moves the focus (Tab),
  /// presses the button with that key equivalent, scrolls, or closes the window.
  bool keyDown(const KeyPress& press);

  /// The user pressed a mouse button in the window, but not on a view that uses it. Takes the focus
  /// from a custom view, which may be waiting for a key; other views keep it.
  void mouseDown();

  /// The window no longer has the keyboard: another window has it, or a menu.
  void keyboardLost();

  /// The user moved the focus to a view of this window, or to none (null).
  void focus(View* view);

  /// The user clicked the close button of the title bar.
  void performClose();

  /// Plays the alert sound of the desktop, if it has one. Only a window that has been shown does.
  void beep() const;

  // For window systems.

  WindowPeer* peer() const { return peer_.get(); }
  /// Returns whether center() was called since the last call of this function.
  bool takeCenterRequest() { return std::exchange(centerRequested_, false); }
  /// All views that Tab can stop at now, in reading order.
  std::vector<View*> keyViews() const;

 private:
  friend class View;

  template <class Property, class Value>
  void set(Property& property, Value&& value) {
    if (property == value) return;
    property = std::forward<Value>(value);
    if (peer_) peer_->windowChanged();
  }
  bool isFree() const { return sheet_ == nullptr && filePanel_ == nullptr; }
  /// The error of a sheet or panel that cannot be shown now.
  std::optional<Error> obstacle() const;
  /// Adopts the panel that `show` returns. `show` gets the function to call when it has closed.
  template <class Show>
  Result<void> beginPanel(const Show& show, std::function<void(const std::string& path)> onChoose);
  /// Calls waiting tasks while the window is free.
  void callWaitingTasks();
  void setContentView(std::unique_ptr<View> view);
  /// Detaches this window from its sheet parent, which then accepts input again.
  void leaveSheetParent();
  /// The first button whose key equivalent satisfies the condition.
  template <class Condition>
  Button* buttonFor(const Condition& wanted) const;
  bool moveFocus(int step);
  /// Forwards the key press to the first scroll view that handles it.
  bool scroll(const KeyPress& press);
  void viewWillBeDestroyed(const View& view);
  /// A view has become enabled, disabled, visible or hidden.
  void inputChanged();

  WindowSystem& windowSystem_;
  std::string title_;
  Size contentSize_;
  WindowLevel level_ = WindowLevel::normal;
  bool closesOnEscape_ = false;
  Size minimumContentSize_;
  bool resizable_ = false;
  bool ignoresEarlyClicks_ = false;
  bool centerRequested_ = false;
  bool visible_ = false;
  std::unique_ptr<WindowPeer> peer_;
  std::unique_ptr<View> contentView_;
  View* firstResponder_ = nullptr;
  WindowDelegate* delegate_ = nullptr;
  Window* sheet_ = nullptr;
  /// True while the sheet closes because this window closes.
  bool isClosing_ = false;
  Window* sheetParent_ = nullptr;
  std::unique_ptr<AlertSheet> alert_;
  std::unique_ptr<FilePanelPeer> filePanel_;
  /// See whenFree().
  std::vector<std::function<void()>> waitingTasks_;
  /// Expires when the window is destroyed.
  std::shared_ptr<Window*> self_ = std::make_shared<Window*>(this);
};

}  // namespace quillmar
