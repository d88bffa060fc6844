// Watches for the tray of an X screen: the owner of the selection _NET_SYSTEM_TRAY_S<n>.
//
// Connected to the display only between start() and stop(), and only events wake it. Under Wayland
// there is nothing to watch: Xwayland has no tray that the user sees, and connecting may start it.
// Main thread.

#pragma once

#include <functional>
#include <memory>
#include <string>

#include <xcb/xcb.h>

#include "platform/environment.h"
#include "platform/linux/status_item/tray_watch.h"
#include "platform/linux/x11/x11_connection.h"

namespace quillmar {

class X11TrayWatch final : public TrayWatch {
 public:
  /// Watches the display that DISPLAY names, unless WAYLAND_DISPLAY is set.
  explicit X11TrayWatch(const Environment& environment);

  /// If the display cannot be reached, there is no tray until the next start.
  void start(std::function<void(bool hasTray)> changed) override;
  void stop() override;

 private:
  void handle(const xcb_generic_event_t& event);
  void lookForTray();
  void setTray(xcb_window_t tray);

  std::string display_;
  std::function<void(bool hasTray)> changed_;
  /// Null while not connected.
  std::unique_ptr<X11Connection> connection_;
  xcb_atom_t selection_ = XCB_ATOM_NONE;
  xcb_atom_t manager_ = XCB_ATOM_NONE;
  xcb_window_t tray_ = XCB_WINDOW_NONE;
};

}  // namespace quillmar
