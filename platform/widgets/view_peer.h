// What shows a view or a window on the screen; made by a window system. A peer reads the state of
// its view and calls the view's functions for what the user does. The view owns the peer; it may
// destroy it during such a call. Main thread.

#pragma once

#include "platform/application.h"

namespace quillmar {

/// How far a view scrolls.
enum class ScrollStep { pageUp, pageDown, beginning, end };

class ViewPeer {
 public:
  virtual ~ViewPeer() = default;

  /// The view's state has changed: show it.
  virtual void viewChanged() = 0;

  /// Subviews were added or removed; new ones have no peers yet.
  virtual void subviewsChanged() {}

  /// The user scrolls. True when the view can scroll, even if it is at its end.
  virtual bool scroll(ScrollStep /*step*/) { return false; }
};

class WindowPeer {
 public:
  virtual ~WindowPeer() = default;

  /// The window's state or content view has changed.
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
