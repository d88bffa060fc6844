// Brings a window to the front on an X display, with the timestamp of the user action that asked
// for it. The toolkit knows only the times of events in its own windows, and the click may have
// been in the panel.

#pragma once

#include <cstdint>

#include <xcb/xcb.h>

#include "platform/application.h"

namespace quillmar {

class X11Activation {
 public:
  /// The connection is the toolkit's and is not owned. An activation without a time gets the
  /// current one.
  X11Activation(xcb_connection_t* connection, xcb_window_t window, const Activation& activation);

  /// Before the window is mapped: tells the window manager the time of the user action.
  void announce() const;

  /// After the window is mapped: asks the window manager to bring it to the front. Gives it the
  /// keyboard if there is no window manager.
  void activate() const;

 private:
  void askWindowManager() const;
  void takeFocus() const;

  xcb_connection_t* connection_;
  xcb_window_t window_;
  std::uint32_t time_;
};

}  // namespace quillmar
