// The base class of widgets.
//
// Widgets are plain objects that controllers build in code. A window owns its tree of views, a
// container owns its subviews, and controllers keep references to the views they need. Each widget
// has state, which the program sets and the screen shows; functions for what a user can do, which
// the real widget and tests call alike; and handlers, which report what the user did. Changes made
// by the program do not invoke handlers.
//
// Setters notify the view's peer, if it has one, only when something changes. A handler may
// destroy the view and the window that it belongs to. Lengths are in device-independent pixels.
// Main thread.

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

/// What a screen reader takes a view for.
enum class AccessibilityRole { button, group, image, link, staticText, textField };

class View {
 public:
  View() = default;
  View(const View&) = delete;
  View& operator=(const View&) = delete;
  virtual ~View();

  // The tree.

  View* superview() const { return superview_; }
  /// The window of the tree, absent while the tree has none.
  Window* window() const;
  /// In reading order.
  virtual std::vector<View*> subviews() const { return {}; }
  /// Calls the visitor's function for this kind of view.
  virtual void accept(ViewVisitor& visitor) = 0;

  // State to show.

  bool enabled() const { return enabled_; }
  void setEnabled(bool enabled) { set(enabled_, enabled); }

  /// A hidden view takes no room.
  bool hidden() const { return hidden_; }
  void setHidden(bool hidden) { set(hidden_, hidden); }

  /// The view's stated size. It is a minimum: a text that needs more gets more; only a view that
  /// scrolls keeps its stated height. Absent: as large as the content.
  std::optional<double> width() const { return width_; }
  void setWidth(std::optional<double> width) { set(width_, width); }
  std::optional<double> height() const { return height_; }
  void setHeight(std::optional<double> height) { set(height_, height); }

  /// The view is never larger than this; what does not fit is cut off. Absent: no limit.
  std::optional<double> maximumWidth() const { return maximumWidth_; }
  void setMaximumWidth(std::optional<double> width) { set(maximumWidth_, width); }
  std::optional<double> maximumHeight() const { return maximumHeight_; }
  void setMaximumHeight(std::optional<double> height) { set(maximumHeight_, height); }

  /// What a screen reader calls the view; empty for the view's own text.
  const std::string& accessibilityLabel() const { return accessibilityLabel_; }
  void setAccessibilityLabel(std::string label) { set(accessibilityLabel_, std::move(label)); }

  /// Absent for what the view's kind is.
  std::optional<AccessibilityRole> accessibilityRole() const { return accessibilityRole_; }
  void setAccessibilityRole(std::optional<AccessibilityRole> role) {
    set(accessibilityRole_, role);
  }

  // The user.

  /// True while the user can do something to the view: it is enabled and not hidden, and so is all
  /// that it lies in; its window is open and no sheet covers it.
  bool takesInput() const;
  /// True for a view that Tab stops at, while it takes input.
  virtual bool acceptsFirstResponder() const { return false; }
  /// The user pressed a key while the view was the first responder. True when that did something.
  virtual bool key(const KeyPress& /*press*/) { return false; }

  // For window systems.

  ViewPeer* peer() const { return peer_.get(); }
  void setPeer(std::unique_ptr<ViewPeer> peer) { peer_ = std::move(peer); }

 protected:
  /// Tells the peer when the value is another one.
  template <class Property, class Value>
  void set(Property& property, Value&& value) {
    if (property == value) return;
    property = std::forward<Value>(value);
    if (peer_) peer_->viewChanged();
  }
  /// Makes this the superview of a view that it now owns, or no longer (null).
  static void adopt(View& view, View* superview) { view.superview_ = superview; }

 private:
  friend class Window;

  View* superview_ = nullptr;
  /// Set in the topmost view of a window's tree.
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
