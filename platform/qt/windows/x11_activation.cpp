#include "platform/qt/windows/x11_activation.h"

#include <memory>

#include <poll.h>

#include "platform/qt/windows/x11_requests.h"

namespace quillmar {

namespace {

constexpr int clockTimeoutMilliseconds = 1000;
/// A request to the window manager that comes from an ordinary program.
constexpr std::uint32_t fromApplication = 1;

struct Disconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

/// The next event; null when none comes in time.
XcbPointer<xcb_generic_event_t> nextEvent(xcb_connection_t* connection) {
  XcbPointer<xcb_generic_event_t> event(xcb_poll_for_event(connection));
  if (event) return event;
  pollfd ready{.fd = xcb_get_file_descriptor(connection), .events = POLLIN, .revents = 0};
  if (poll(&ready, 1, clockTimeoutMilliseconds) == 1) event.reset(xcb_poll_for_event(connection));
  return event;
}

/// The server's time; 0 when it does not answer. The event for a changed property has the time; a
/// separate connection keeps that event apart from the toolkit's.
std::uint32_t serverTime() {
  int screenNumber = 0;
  const std::unique_ptr<xcb_connection_t, Disconnect> connection(
      xcb_connect(nullptr, &screenNumber));
  if (xcb_connection_has_error(connection.get()) != 0) return 0;
  const xcb_window_t root = x11RootWindow(connection.get());
  const xcb_window_t window = xcb_generate_id(connection.get());
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(connection.get(), 0, window, root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  xcb_change_property(connection.get(), XCB_PROP_MODE_APPEND, window, XCB_ATOM_WM_NAME,
                      XCB_ATOM_STRING, 8, 0, nullptr);
  xcb_flush(connection.get());
  while (const auto event = nextEvent(connection.get())) {
    if ((event->response_type & 0x7f) != XCB_PROPERTY_NOTIFY) continue;
    return reinterpret_cast<const xcb_property_notify_event_t*>(event.get())->time;
  }
  return 0;
}

std::uint32_t timeOf(const Activation& activation) {
  if (activation.timestamp != 0) return activation.timestamp;
  const std::uint32_t time = timeOfStartupId(activation.token);
  return time != 0 ? time : serverTime();
}

}  // namespace

X11Activation::X11Activation(xcb_connection_t* connection, xcb_window_t window,
                             const Activation& activation)
    : connection_(connection), window_(window), time_(timeOf(activation)) {}

void X11Activation::announce() const {
  if (time_ == 0) return;
  // The toolkit keeps the time on a separate window where the window manager supports it.
  const xcb_window_t own = x11WindowIn(connection_, window_, "_NET_WM_USER_TIME_WINDOW");
  const xcb_window_t holder = own == XCB_WINDOW_NONE ? window_ : own;
  xcb_change_property(connection_, XCB_PROP_MODE_REPLACE, holder,
                      x11Atom(connection_, "_NET_WM_USER_TIME"), XCB_ATOM_CARDINAL, 32, 1, &time_);
}

void X11Activation::activate() const {
  announce();
  if (x11HasWindowManager(connection_)) {
    askWindowManager();
  } else {
    takeFocus();
  }
  xcb_flush(connection_);
}

void X11Activation::askWindowManager() const {
  xcb_client_message_event_t message = {};
  message.response_type = XCB_CLIENT_MESSAGE;
  message.format = 32;
  message.window = window_;
  message.type = x11Atom(connection_, "_NET_ACTIVE_WINDOW");
  message.data.data32[0] = fromApplication;
  message.data.data32[1] = time_;
  xcb_send_event(connection_, 0, x11RootWindow(connection_),
                 XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT | XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY,
                 reinterpret_cast<const char*>(&message));
}

void X11Activation::takeFocus() const {
  // Without a window manager the window is viewable as soon as the server has mapped it. With a
  // window manager that does not announce itself it may not be viewable yet: the request fails, and
  // the window manager gives the focus itself.
  const xcb_void_cookie_t cookie =
      xcb_set_input_focus_checked(connection_, XCB_INPUT_FOCUS_PARENT, window_, time_);
  xcb_discard_reply(connection_, cookie.sequence);
}

}  // namespace quillmar
