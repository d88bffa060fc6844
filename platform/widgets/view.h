// What every widget has in common.
//
// Widgets are plain objects that controllers build in code. A window owns its tree of views, a
// container owns its subviews, and controllers hold references to what they need of it. Each widget
// has the state that it shows, which the program sets; verbs of the user, which the real widget and
// tests call alike; and handlers, through which the program hears of what the user did. What the
// program sets is no deed of the user and calls no handler.
//
// Setters tell the view's peer, if it is on a screen, only when something changes. A handler may
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

  /// The view's stated size. It is a minimum: a text that needs more gets more. Absent: as large as
  /// the content.
  std::optional<double> width() const { return width_; }
  void setWidth(std::optional<double> width) { set(width_, width); }
  std::optional<double> height() const { return height_; }
  void setHeight(std::optional<double> height) { set(height_, height); }

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
  std::string accessibilityLabel_;
  std::optional<AccessibilityRole> accessibilityRole_;
  std::unique_ptr<ViewPeer> peer_;
};

}  // namespace quillmar
