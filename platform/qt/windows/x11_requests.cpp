#include "platform/qt/windows/x11_requests.h"

#include <QGuiApplication>
#include <cstring>

namespace quillmar {

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
  const XcbReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(connection, cookie, nullptr));
  return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

std::vector<std::uint8_t> x11KeysDown(xcb_connection_t* connection) {
  const XcbReply<xcb_query_keymap_reply_t> reply(
      xcb_query_keymap_reply(connection, xcb_query_keymap(connection), nullptr));
  std::vector<std::uint8_t> down;
  constexpr unsigned keyCodes = 256;
  for (unsigned code = 0; reply && code < keyCodes; ++code) {
    if ((reply->keys[code / 8] >> (code % 8)) & 1U) down.push_back(static_cast<std::uint8_t>(code));
  }
  return down;
}

}  // namespace quillmar
