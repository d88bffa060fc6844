// The base class of widgets.
//
// Widgets are plain objects that controllers build in code. A window owns its tree of views, a
// container owns its subviews, and controllers keep references to the views they need. Each widget
// has state, which the program sets and the screen shows; functions for user events, which the real
// widgets and tests call alike; and callbacks, which report user events to the program. Changes
// made by the program do not invoke callbacks.
//
// Setters notify the view's peer only if the value changes. A callback may destroy the view and its
// window. Lengths are in device-independent pixels. Main thread.

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "platform/key_press.h"
#include "platform/widgets/view_peer.h"

namespace quillmar {

class ViewVisitor;
class Window;

/// The role that is reported to screen readers.
enum class AccessibilityRole {
  button,
  checkbox,
  group,
  image,
  link,
  outline,
  popUpButton,
  staticText,
  tabGroup,
  textArea,
  textField
};

class View {
 public:
  View() = default;
  View(const View&) = delete;
  View& operator=(const View&) = delete;
  virtual ~View();

  // The tree.

  View* superview() const { return superview_; }
  /// The window that contains the view; null if there is none.
  Window* window() const;
  /// In reading order.
  virtual std::vector<View*> subviews() const { return {}; }
  /// Calls the visitor's function for the type of this view.
  virtual void accept(ViewVisitor& visitor) = 0;

  // State to show.

  bool enabled() const { return enabled_; }
  void setEnabled(bool enabled);

  /// A hidden view takes no space.
  bool hidden() const { return hidden_; }
  void setHidden(bool hidden);

  /// The size of the view; absent for the size of its content. It is a minimum: text that needs
  /// more space gets it. Only the height of a scroll view is exact.
  std::optional<double> width() const { return width_; }
  void setWidth(std::optional<double> width) { set(width_, width); }
  std::optional<double> height() const { return height_; }
  void setHeight(std::optional<double> height) { set(height_, height); }

  /// The maximum size; content that does not fit is clipped. Absent for no limit.
  std::optional<double> maximumWidth() const { return maximumWidth_; }
  void setMaximumWidth(std::optional<double> width) { set(maximumWidth_, width); }
  std::optional<double> maximumHeight() const { return maximumHeight_; }
  void setMaximumHeight(std::optional<double> height) { set(maximumHeight_, height); }

  /// The name that is reported to screen readers; empty for the view's text.
  const std::string& accessibilityLabel() const { return accessibilityLabel_; }
  void setAccessibilityLabel(std::string label) { set(accessibilityLabel_, std::move(label)); }

  /// Absent for the default role of the view's type.
  std::optional<AccessibilityRole> accessibilityRole() const { return accessibilityRole_; }
  void setAccessibilityRole(std::optional<AccessibilityRole> role) {
    set(accessibilityRole_, role);
  }

  // Events from the user.

  /// True if the view accepts input: the view and all its superviews are enabled and not hidden,
  /// its window is open, and no sheet covers the window.
  bool takesInput() const;
  /// True if Tab can move the focus to the view now.
  virtual bool acceptsFirstResponder() const { return false; }
  /// The user pressed a key while the view was the first responder. Returns true if the view
  /// handled it.
  virtual bool key(const KeyPress& /*press*/) { return false; }
  /// The user pressed a key in the window. Every view that takes input is asked before the first
  /// responder and the default button. Returns true if the view handled the key.
  virtual bool performKeyEquivalent(const KeyPress& /*press*/) { return false; }
  /// True if files can be dropped on the view and its subviews, depending on the files.
  virtual bool isDragDestination() const { return false; }
  /// The user drags files over the view. `files` holds the absolute paths of the local ones among
  /// the dragged items, in their order. Returns true if the view would take a drop; the pointer
  /// shows it. May be called often during a drag, and only while the view takes input.
  virtual bool draggingEntered(const std::vector<std::string>& /*files*/) { return false; }
  /// The user dropped the files on the view. Returns false if the view did not take them. May
  /// destroy the view and its window.
  virtual bool performDragOperation(const std::vector<std::string>& /*files*/) { return false; }
  /// The user drags or drops files at this view: asks the nearest drag destination around it, if
  /// that takes input.
  bool dragFiles(const std::vector<std::string>& files);
  bool dropFiles(const std::vector<std::string>& files);
  /// The view no longer gets key presses: another view or none is the first responder, the window
  /// has lost the keyboard, or the view takes no input any more. May be called more than once.
  /// The view must not destroy itself or its window.
  virtual void focusLost() {}

  // For window systems.

  ViewPeer* peer() const { return peer_.get(); }
  void setPeer(std::unique_ptr<ViewPeer> peer) { peer_ = std::move(peer); }

 protected:
  /// Sets the value and notifies the peer if it changed.
  template <class Property, class Value>
  void set(Property& property, Value&& value) {
    if (property == value) return;
    property = std::forward<Value>(value);
    if (peer_) peer_->viewChanged();
  }
  /// Sets the superview of a view; null if no view owns it any more.
  static void adopt(View& view, View* superview) { view.superview_ = superview; }

 private:
  friend class Window;

  /// The view or the nearest superview on which files can be dropped now; null if there is none.
  View* dragDestination();

  View* superview_ = nullptr;
  /// Set only in the root view of a window.
  Window* window_ = nullptr;
  bool enabled_ = true;
  bool hidden_ = false;
  std::optional<double> width_;
  std::optional<double> height_;
  std::optional<double> maximumWidth_;
  std::optional<double> maximumHeight_;
  std::string accessibilityLabel_;
  std::optional<AccessibilityRole> accessibilityRole_;
  std::unique_ptr<ViewPeer> peer_;
};

}  // namespace quillmar
