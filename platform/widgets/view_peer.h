// What a window system holds for a view or a window on the screen. A peer reads the state of its
// model, shows it, and calls the model's user verbs. The model owns the peer and outlives it; a
// peer may be destroyed from within a verb that it called. Main thread.

#pragma once

#include "platform/application.h"

namespace quillmar {

/// Where to a view that scrolls is to be moved.
enum class ScrollStep { pageUp, pageDown, beginning, end };

class ViewPeer {
 public:
  virtual ~ViewPeer() = default;

  /// Some of the view's state has changed: show what it is now.
  virtual void viewChanged() = 0;

  /// Subviews were added or removed; new ones have no peers yet.
  virtual void subviewsChanged() {}

  /// The user wants to see another part of the view. True when the view scrolls, even if it is
  /// there already.
  virtual bool scroll(ScrollStep /*step*/) { return false; }
};

class WindowPeer {
 public:
  virtual ~WindowPeer() = default;

  /// Some of the window's state has changed, its content view perhaps.
  virtual void windowChanged() = 0;

  /// The program made another view the first responder, or none.
  virtual void firstResponderChanged() = 0;

  /// Brings the window to the screen if it is not there, in front of the others and with the focus;
  /// centred if the window asks for that.
  virtual void show(const Activation& activation) = 0;

  /// Takes the window off the screen.
  virtual void hide() = 0;
};

}  // namespace quillmar
