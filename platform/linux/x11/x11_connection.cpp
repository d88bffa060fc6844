#include "platform/linux/x11/x11_connection.h"

#include <cstdint>
#include <utility>

#include <poll.h>

#include "platform/linux/application/broken_pipes.h"
#include "platform/xcb/connect_with_timeout.h"

namespace quillmar {

// Our data in the GSource. GLib allocates and frees the whole struct.
struct X11Connection::Source {
  GSource base;
  X11Connection* connection;
  gpointer descriptor;
};

GSourceFuncs X11Connection::sourceFunctions = {
    prepareSource, checkSource, dispatchSource, nullptr, nullptr, nullptr,
};

Result<std::unique_ptr<X11Connection>> X11Connection::open(const std::string& display,
                                                           Handlers handlers,
                                                           std::chrono::milliseconds timeout) {
  ignoreBrokenPipes();
  static XcbConnector connector;
  auto connected = connector.connect(display, timeout);
  if (!connected) {
    return Error{"the X display “" + display + "” " + connected.error().description};
  }
  std::unique_ptr<X11Connection> connection(
      new X11Connection(std::move(connected.value().connection), std::move(handlers)));
  auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection->xcb()));
  while (connection->screenNumber_ < connected.value().screenNumber && screens.rem > 1) {
    xcb_screen_next(&screens);
    ++connection->screenNumber_;
  }
  connection->root_ = screens.data->root;
  return connection;
}

X11Connection::X11Connection(XcbConnectionPointer xcb, Handlers handlers)
    : xcb_(std::move(xcb)), handlers_(std::move(handlers)) {
  source_ = reinterpret_cast<Source*>(g_source_new(&sourceFunctions, sizeof(Source)));
  source_->connection = this;
  source_->descriptor =
      g_source_add_unix_fd(&source_->base, xcb_get_file_descriptor(xcb_.get()), G_IO_IN);
  g_source_set_name(&source_->base, "X11Connection");
  g_source_attach(&source_->base, nullptr);
}

X11Connection::~X11Connection() {
  g_source_destroy(&source_->base);
  g_source_unref(&source_->base);
}

std::vector<xcb_atom_t> X11Connection::internAtoms(const std::vector<std::string_view>& names) {
  std::vector<xcb_intern_atom_cookie_t> cookies;
  cookies.reserve(names.size());
  for (const std::string_view name : names) {
    cookies.push_back(
        xcb_intern_atom(xcb(), false, static_cast<std::uint16_t>(name.size()), name.data()));
  }
  std::vector<xcb_atom_t> atoms;
  atoms.reserve(names.size());
  for (const auto cookie : cookies) {
    const XcbPointer<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(xcb(), cookie, nullptr));
    atoms.push_back(reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE});
  }
  return atoms;
}

xcb_window_t X11Connection::selectionOwner(xcb_atom_t selection) {
  const auto cookie = xcb_get_selection_owner(xcb(), selection);
  const XcbPointer<xcb_get_selection_owner_reply_t> reply(
      xcb_get_selection_owner_reply(xcb(), cookie, nullptr));
  return reply ? reply->owner : xcb_window_t{XCB_WINDOW_NONE};
}

bool X11Connection::selectStructureEvents(xcb_window_t window) {
  const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
  const auto cookie =
      xcb_change_window_attributes_checked(xcb(), window, XCB_CW_EVENT_MASK, &events);
  return !XcbPointer<xcb_generic_error_t>(xcb_request_check(xcb(), cookie));
}

xcb_window_t X11Connection::createHiddenWindow() {
  const xcb_window_t window = xcb_generate_id(xcb());
  const std::uint32_t events = XCB_EVENT_MASK_PROPERTY_CHANGE;
  xcb_create_window(xcb(), 0, window, root_, -1, -1, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY,
                    XCB_COPY_FROM_PARENT, XCB_CW_EVENT_MASK, &events);
  return window;
}

bool X11Connection::handleEventsUntil(const std::function<bool()>& done,
                                      std::chrono::steady_clock::time_point deadline) {
  while (true) {
    if (!handlePending()) return false;
    if (done()) return true;
    if (hasPending()) continue;
    const auto left =
        std::chrono::ceil<std::chrono::milliseconds>(deadline - std::chrono::steady_clock::now());
    if (left.count() <= 0) return false;
    pollfd descriptor{xcb_get_file_descriptor(xcb()), POLLIN, 0};
    poll(&descriptor, 1, static_cast<int>(left.count()));
  }
}

bool X11Connection::hasPending() {
  if (auto* event = xcb_poll_for_queued_event(xcb())) queued_.emplace_back(event);
  return !queued_.empty() || xcb_connection_has_error(xcb());
}

XcbPointer<xcb_generic_event_t> X11Connection::nextEvent() {
  if (queued_.empty()) return XcbPointer<xcb_generic_event_t>(xcb_poll_for_event(xcb()));
  auto event = std::move(queued_.front());
  queued_.pop_front();
  return event;
}

bool X11Connection::handlePending() {
  while (const auto event = nextEvent()) handlers_.event(*event);
  xcb_flush(xcb());
  if (!xcb_connection_has_error(xcb())) return true;
  g_source_destroy(&source_->base);
  // The handler may destroy this object, and with it the handler.
  const auto closed = std::exchange(handlers_.closed, nullptr);
  if (closed) closed();
  return false;
}

gboolean X11Connection::prepareSource(GSource* source, gint* timeout) {
  *timeout = -1;
  return reinterpret_cast<Source*>(source)->connection->hasPending();
}

gboolean X11Connection::checkSource(GSource* source) {
  const auto* own = reinterpret_cast<Source*>(source);
  return g_source_query_unix_fd(source, own->descriptor) != 0 || own->connection->hasPending();
}

gboolean X11Connection::dispatchSource(GSource* source, GSourceFunc, gpointer) {
  reinterpret_cast<Source*>(source)->connection->handlePending();
  return G_SOURCE_CONTINUE;
}

}  // namespace quillmar
