// Requests to the X server on the toolkit's connection.

#pragma once

#include <cstdint>
#include <set>

#include <xcb/xcb.h>

#include "platform/xcb/xcb_pointers.h"

namespace quillmar {

/// The toolkit's connection; null if its display is not an X server.
xcb_connection_t* x11Connection();

xcb_window_t x11RootWindow(xcb_connection_t* connection);

/// XCB_ATOM_NONE if the server does not answer.
xcb_atom_t x11Atom(xcb_connection_t* connection, const char* name);

/// The window that a property of a window names; XCB_WINDOW_NONE if there is no such property.
xcb_window_t x11WindowIn(xcb_connection_t* connection, xcb_window_t window, const char* property);

/// The property of the root window that window managers set.
inline constexpr const char* x11WindowManagerCheck = "_NET_SUPPORTING_WM_CHECK";
bool x11HasWindowManager(xcb_connection_t* connection);

/// The event's type (XCB_..._NOTIFY), without the bit that marks events of other programs.
int x11EventType(const xcb_generic_event_t& event);

/// Selects these events of the window, in addition to those that are selected already.
void x11SelectAlso(xcb_connection_t* connection, xcb_window_t window, std::uint32_t eventMask);

/// True if the key is down now. False if the toolkit's display is not an X server.
bool x11IsKeyDown(std::uint32_t keyCode);
/// The key codes of all keys that are down now.
std::set<std::uint32_t> x11KeysDown(xcb_connection_t* connection);
/// The keys that were down at the time of the event.
std::set<std::uint32_t> x11KeysDown(const xcb_keymap_notify_event_t& event);

}  // namespace quillmar
