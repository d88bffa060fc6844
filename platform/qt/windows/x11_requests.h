// Questions to the X server on the toolkit's connection.

#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <vector>

#include <xcb/xcb.h>

namespace quillmar {

struct FreeReply {
  void operator()(void* memory) const { std::free(memory); }
};

/// A reply or an event, which xcb allocates with malloc.
template <class T>
using XcbReply = std::unique_ptr<T, FreeReply>;

/// The toolkit's connection; null when its display is no X server.
xcb_connection_t* x11Connection();

xcb_window_t x11RootWindow(xcb_connection_t* connection);

/// XCB_ATOM_NONE when the server doesn't answer.
xcb_atom_t x11Atom(xcb_connection_t* connection, const char* name);

/// The key codes of all keys that are down now.
std::vector<std::uint8_t> x11KeysDown(xcb_connection_t* connection);

}  // namespace quillmar
