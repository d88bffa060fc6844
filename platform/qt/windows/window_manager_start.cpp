#include "platform/qt/windows/window_manager_start.h"

#include <QCoreApplication>

#include "platform/qt/windows/x11_activation.h"
#include "platform/qt/windows/x11_requests.h"

namespace quillmar {

WindowManagerStart& WindowManagerStart::shared() {
  // Never destroyed: the application may live as long as the process.
  static auto* const shared = new WindowManagerStart(x11Connection());
  return *shared;
}

WindowManagerStart::WindowManagerStart(xcb_connection_t* connection)
    : connection_(connection),
      root_(x11RootWindow(connection)),
      check_(x11Atom(connection, x11WindowManagerCheck)) {
  x11SelectAlso(connection, root_, XCB_EVENT_MASK_PROPERTY_CHANGE);
  QCoreApplication::instance()->installNativeEventFilter(this);
}

bool WindowManagerStart::nativeEventFilter(const QByteArray& eventType, void* message,
                                           qintptr* /*result*/) {
  if (eventType != "xcb_generic_event_t" || !window_) return false;
  const auto& event = *static_cast<const xcb_generic_event_t*>(message);
  if (x11EventType(event) != XCB_PROPERTY_NOTIFY) return false;
  const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
  if (change.window != root_ || change.atom != check_ || change.state != XCB_PROPERTY_NEW_VALUE ||
      !x11HasWindowManager(connection_)) {
    return false;
  }
  // The window manager reads the request after it has put its frames around the windows.
  if (window_->isVisible()) {
    X11Activation(connection_, static_cast<xcb_window_t>(window_->winId()), {}).activate();
  }
  window_ = nullptr;
  return false;
}

}  // namespace quillmar
