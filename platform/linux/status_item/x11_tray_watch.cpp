#include "platform/linux/status_item/x11_tray_watch.h"

#include <cstdint>
#include <utility>
#include <vector>

namespace quillmar {

X11TrayWatch::X11TrayWatch(const Environment& environment) {
  if (!environment.value("WAYLAND_DISPLAY").value_or("").empty()) return;
  display_ = environment.value("DISPLAY").value_or("");
}

void X11TrayWatch::start(std::function<void(bool hasTray)> changed) {
  changed_ = std::move(changed);
  if (display_.empty()) return;
  const auto closed = [this] {
    connection_.reset();
    setTray(XCB_WINDOW_NONE);
  };
  auto connection = X11Connection::open(
      display_, {[this](const xcb_generic_event_t& event) { handle(event); }, closed});
  if (!connection) return;
  connection_ = std::move(connection).value();
  const std::vector<xcb_atom_t> atoms = connection_->internAtoms(
      {"_NET_SYSTEM_TRAY_S" + std::to_string(connection_->screenNumber()), "MANAGER"});
  selection_ = atoms[0];
  manager_ = atoms[1];
  // A tray that starts announces itself to those who have asked for this.
  connection_->selectStructureEvents(connection_->root());
  lookForTray();
}

void X11TrayWatch::stop() {
  connection_.reset();
  tray_ = XCB_WINDOW_NONE;
  changed_ = nullptr;
}

void X11TrayWatch::handle(const xcb_generic_event_t& event) {
  switch (eventKind(event)) {
    case XCB_CLIENT_MESSAGE: {
      const auto& message = as<xcb_client_message_event_t>(event);
      if (message.type == manager_ && message.data.data32[1] == selection_) lookForTray();
      break;
    }
    case XCB_DESTROY_NOTIFY:
      if (as<xcb_destroy_notify_event_t>(event).window == tray_) lookForTray();
      break;
    default:
      break;
  }
}

void X11TrayWatch::lookForTray() {
  // A tray may go away before its end can be observed.
  xcb_window_t owner = connection_->selectionOwner(selection_);
  while (owner != XCB_WINDOW_NONE && !connection_->selectStructureEvents(owner)) {
    owner = connection_->selectionOwner(selection_);
  }
  setTray(owner);
}

void X11TrayWatch::setTray(xcb_window_t tray) {
  const bool hadTray = std::exchange(tray_, tray) != XCB_WINDOW_NONE;
  const bool hasTray = tray != XCB_WINDOW_NONE;
  if (hasTray != hadTray && changed_) changed_(hasTray);
}

}  // namespace quillmar
