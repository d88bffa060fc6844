#include "platform/qt/windows/x11_requests.h"

#include <QGuiApplication>
#include <cstddef>
#include <cstring>
#include <iterator>

namespace quillmar {

namespace {

constexpr unsigned bitsInByte = 8;

/// `bits` has one for each key code from `first` on.
std::set<std::uint32_t> keysOf(const std::uint8_t* bits, std::size_t bytes, std::uint32_t first) {
  std::set<std::uint32_t> keys;
  for (std::uint32_t i = 0; i < bytes * bitsInByte; ++i) {
    if ((bits[i / bitsInByte] >> (i % bitsInByte)) & 1U) keys.insert(first + i);
  }
  return keys;
}

}  // namespace

xcb_connection_t* x11Connection() {
  // Another platform plugin may have the interface, too, but no connection behind it.
  if (QGuiApplication::platformName() != QLatin1String("xcb")) return nullptr;
  auto* const application = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  return application == nullptr ? nullptr : application->connection();
}

xcb_window_t x11RootWindow(xcb_connection_t* connection) {
  return xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
}

xcb_atom_t x11Atom(xcb_connection_t* connection, const char* name) {
  const xcb_intern_atom_cookie_t cookie =
      xcb_intern_atom(connection, 0, static_cast<std::uint16_t>(std::strlen(name)), name);
  const XcbPointer<xcb_intern_atom_reply_t> reply(
      xcb_intern_atom_reply(connection, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

xcb_window_t x11WindowIn(xcb_connection_t* connection, xcb_window_t window, const char* property) {
  const xcb_get_property_cookie_t cookie =
      xcb_get_property(connection, 0, window, x11Atom(connection, property), XCB_ATOM_WINDOW, 0, 1);
  const XcbPointer<xcb_get_property_reply_t> reply(
      xcb_get_property_reply(connection, cookie, nullptr));
  xcb_window_t named = XCB_WINDOW_NONE;
  if (reply && xcb_get_property_value_length(reply.get()) == sizeof named) {
    std::memcpy(&named, xcb_get_property_value(reply.get()), sizeof named);
  }
  return named;
}

bool x11HasWindowManager(xcb_connection_t* connection) {
  const xcb_window_t check =
      x11WindowIn(connection, x11RootWindow(connection), x11WindowManagerCheck);
  // A window manager that has ended may have left its property on the root, but not its window.
  return check != XCB_WINDOW_NONE && x11WindowIn(connection, check, x11WindowManagerCheck) == check;
}

int x11EventType(const xcb_generic_event_t& event) {
  constexpr int sentByProgram = 0x80;
  return event.response_type & ~sentByProgram;
}

void x11SelectAlso(xcb_connection_t* connection, xcb_window_t window, std::uint32_t eventMask) {
  const XcbPointer<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
      connection, xcb_get_window_attributes(connection, window), nullptr));
  if (!attributes) return;
  const std::uint32_t all = attributes->your_event_mask | eventMask;
  xcb_change_window_attributes(connection, window, XCB_CW_EVENT_MASK, &all);
}

bool x11IsKeyDown(std::uint32_t keyCode) {
  xcb_connection_t* const connection = x11Connection();
  return connection != nullptr && x11KeysDown(connection).contains(keyCode);
}

std::set<std::uint32_t> x11KeysDown(xcb_connection_t* connection) {
  const XcbPointer<xcb_query_keymap_reply_t> reply(
      xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr));
  return reply ? keysOf(reply->keys, std::size(reply->keys), 0) : std::set<std::uint32_t>();
}

std::set<std::uint32_t> x11KeysDown(const xcb_keymap_notify_event_t& event) {
  // The event has no room for the first eight, which no key has.
  return keysOf(event.keys, std::size(event.keys), bitsInByte);
}

}  // namespace quillmar
