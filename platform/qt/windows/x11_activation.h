// The leave to come to the front on an X display. The toolkit knows only the times of events in its
// own windows; the click that a window answers may have been in the panel.

#pragma once

#include <cstdint>

#include <xcb/xcb.h>

#include "platform/application.h"

namespace quillmar {

class X11Activation {
 public:
  /// The connection, which outlives this, is the toolkit's. An activation without a time counts as
  /// one of right now.
  X11Activation(xcb_connection_t* connection, xcb_window_t window, const Activation& activation);

  /// Before the window is mapped: the window manager is told what event it answers.
  void announce() const;

  /// Once it is mapped: asks the window manager to bring it to the front. Where there is none,
  /// gives it the keyboard.
  void activate() const;

 private:
  void askWindowManager() const;
  void takeFocus() const;

  xcb_connection_t* connection_;
  xcb_window_t window_;
  std::uint32_t time_;
};

}  // namespace quillmar
