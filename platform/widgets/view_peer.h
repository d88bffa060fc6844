// Peers show views and windows on the screen. A window system creates them. A peer reads the state
// of its view and calls the view's functions for user events. The view owns the peer and may
// destroy it during such a call. Main thread.

#pragma once

#include "platform/application.h"

namespace quillmar {

/// How far to scroll.
enum class ScrollStep { pageUp, pageDown, beginning, end };

class ViewPeer {
 public:
  virtual ~ViewPeer() = default;

  /// The view's state has changed.
  virtual void viewChanged() = 0;

  /// Subviews were added or removed; new ones have no peers yet.
  virtual void subviewsChanged() {}

  /// The user scrolls with the keyboard. Returns true if the view can scroll, even if it is at its
  /// end.
  virtual bool scroll(ScrollStep /*step*/) { return false; }
};

class WindowPeer {
 public:
  virtual ~WindowPeer() = default;

  /// The window's state or content view has changed.
  virtual void windowChanged() = 0;

  /// Another view, or none, has become the first responder.
  virtual void firstResponderChanged() = 0;

  /// Shows the window, raises it and gives it the focus; centres it if Window::takeCenterRequest()
  /// says so.
  virtual void show(const Activation& activation) = 0;

  /// Hides the window.
  virtual void hide() = 0;

  /// Plays the alert sound of the desktop, if it has one.
  virtual void beep() = 0;
};

}  // namespace quillmar
