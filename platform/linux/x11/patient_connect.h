// A connection to an X server that may be stopped, for which libxcb would wait for ever.

#pragma once

#include <chrono>
#include <string>

#include <xcb/xcb.h>

namespace quillmar {

struct XcbConnected {
  /// Owned by the caller. Null when the server cannot be reached, or does not answer in time.
  xcb_connection_t* connection = nullptr;
  /// The number of the display's own screen.
  int screenNumber = 0;
};

/// Waits for the server as long as `patience`. One that has not answered in that time is not waited
/// for again: later calls take its answer if it has come by then. Main thread.
XcbConnected connectPatiently(const std::string& display, std::chrono::milliseconds patience);

}  // namespace quillmar
