// Owners of what xcb allocates. For both platform/linux and platform/qt; headers only.

#pragma once

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace quillmar {

struct XcbFree {
  void operator()(void* memory) const { std::free(memory); }
};

/// A reply, an event or an error.
template <class T>
using XcbPointer = std::unique_ptr<T, XcbFree>;

struct XcbDisconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

using XcbConnectionPointer = std::unique_ptr<xcb_connection_t, XcbDisconnect>;

}  // namespace quillmar
