// A connection to an X server that may be stopped, for which libxcb would wait for ever.

#pragma once

#include <chrono>
#include <memory>
#include <string>

#include <xcb/xcb.h>

namespace quillmar {

struct XcbDisconnect {
  void operator()(xcb_connection_t* connection) const { xcb_disconnect(connection); }
};

struct XcbConnected {
  /// Null when the server cannot be reached, or does not answer in time.
  std::unique_ptr<xcb_connection_t, XcbDisconnect> connection;
  /// The number of the display's own screen.
  int screenNumber = 0;
};

/// Waits for the server as long as `patience`. One that has not answered in that time is not waited
/// for again: later calls take its answer if it has come by then. Main thread.
XcbConnected connectPatiently(const std::string& display, std::chrono::milliseconds patience);

}  // namespace quillmar
