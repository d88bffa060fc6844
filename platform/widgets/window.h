// A window: a title and one tree of views.
//
// A window is built without a screen and gets a peer, from its window system, when it is first
// shown. It keeps its content while it is closed and can be shown again. A handler may close its
// own window, and may destroy it. Main thread.

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/application.h"
#include "platform/key_press.h"
#include "platform/result.h"
#include "platform/widgets/view.h"
#include "platform/widgets/view_peer.h"

namespace quillmar {

class Button;
class Window;
class WindowSystem;

/// In device-independent pixels.
struct Size {
  double width = 0;
  double height = 0;

  bool operator==(const Size&) const = default;
};

enum class WindowLevel {
  normal,
  /// In front of the normal windows of all programs.
  floating,
};

class WindowDelegate {
 public:
  virtual ~WindowDelegate() = default;

  /// The user or the program closes the window. It takes no more input, has left the screen, and is
  /// no longer the sheet of another window. The delegate may show or destroy it, and may begin
  /// another sheet.
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

  /// A minimum: a window whose content needs more gets more, as far as the screen goes. A resizable
  /// window has this size when it is first shown.
  const Size& contentSize() const { return contentSize_; }
  void setContentSize(const Size& size) { set(contentSize_, size); }

  /// The user can change the size of the window, minimize and maximize it.
  bool resizable() const { return resizable_; }
  void setResizable(bool resizable) { set(resizable_, resizable); }

  /// The user cannot make the window smaller than this, or than its content needs.
  const Size& minimumContentSize() const { return minimumContentSize_; }
  void setMinimumContentSize(const Size& size) { set(minimumContentSize_, size); }

  WindowLevel level() const { return level_; }
  void setLevel(WindowLevel level) { set(level_, level); }

  /// Escape closes a window without a cancel button, if set.
  bool closesOnEscape() const { return closesOnEscape_; }
  void setClosesOnEscape(bool closes) { closesOnEscape_ = closes; }

  /// For windows that ask a question: the window ignores clicks that come so soon after it appears
  /// that the user cannot have read it.
  bool ignoresEarlyClicks() const { return ignoresEarlyClicks_; }
  void setIgnoresEarlyClicks(bool ignores) { set(ignoresEarlyClicks_, ignores); }

  View* contentView() const { return contentView_.get(); }

  /// Makes a new view the content, in place of the one before.
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

  /// The next show() puts the window in the middle of the screen, a little lower if it would cover
  /// another one of the program. Some desktops do not let programs place their windows.
  void center() { centers_ = true; }

  /// Shows the window, or brings it forward, with the focus. The first time, a window without a
  /// first responder makes its default button that. Fails when there is no screen to show it on or
  /// nothing to show it with.
  Result<void> show(const Activation& activation);

  /// Takes the window off the screen, after its sheet. Does nothing when the window is not there.
  void close();

  bool visible() const { return visible_; }

  /// Shows `sheet` on top of this window, which takes no input until the sheet is closed. One at a
  /// time: precondition: no sheet is open. The sheet is not owned. It closes with this window, and
  /// when this window is destroyed.
  Result<void> beginSheet(Window& sheet, const Activation& activation);
  Window* sheet() const { return sheet_; }
  /// The window that this one is open as a sheet of.
  Window* sheetParent() const { return sheetParent_; }

  View* firstResponder() const { return firstResponder_; }
  /// `view` is one of this window's, or null for none.
  void makeFirstResponder(View* view);

  /// The first button of the window that Return presses, or Escape, whether or not it takes input
  /// now; null for none.
  Button* defaultButton() const;
  Button* cancelButton() const;

  // The user.

  /// True while the user can do something to the window: it is open and no sheet covers it.
  bool takesInput() const { return visible_ && sheet_ == nullptr; }

  /// The user pressed a key in the window. The first responder has it first; then it moves the
  /// focus (Tab), presses the button whose key equivalent it is, scrolls, or closes the window.
  /// True when it did any of that.
  bool key(const KeyPress& press);

  /// The user moved the focus to a view of this window, or away from all (null).
  void focus(View* view);

  /// The user closed the window with its title bar.
  void performClose();

  // For window systems.

  WindowPeer* peer() const { return peer_.get(); }
  /// True once for each center().
  bool takeCenters() { return std::exchange(centers_, false); }
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
  void setContentView(std::unique_ptr<View> view);
  /// If this window is a sheet, its parent takes input again.
  void leaveSheetParent();
  /// The first button whose key equivalent meets the condition.
  template <class Condition>
  Button* buttonFor(const Condition& wanted) const;
  bool moveFocus(int step);
  /// Hands the press to the first view that scrolls with it.
  bool scroll(const KeyPress& press);
  void viewWillBeDestroyed(const View& view);

  WindowSystem& windowSystem_;
  std::string title_;
  Size contentSize_;
  WindowLevel level_ = WindowLevel::normal;
  bool closesOnEscape_ = false;
  Size minimumContentSize_;
  bool resizable_ = false;
  bool ignoresEarlyClicks_ = false;
  bool centers_ = false;
  bool visible_ = false;
  std::unique_ptr<WindowPeer> peer_;
  std::unique_ptr<View> contentView_;
  View* firstResponder_ = nullptr;
  WindowDelegate* delegate_ = nullptr;
  Window* sheet_ = nullptr;
  Window* sheetParent_ = nullptr;
  /// Expires with the window.
  std::shared_ptr<Window*> self_ = std::make_shared<Window*>(this);
};

}  // namespace quillmar
