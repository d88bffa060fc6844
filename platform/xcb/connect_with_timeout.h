// Connecting to an X server that may be stopped: libxcb would wait for its reply without limit.

#pragma once

#include <chrono>
#include <string>
#include <utility>

#include "platform/call_with_timeout.h"
#include "platform/result.h"
#include "platform/xcb/xcb_pointers.h"

namespace quillmar {

struct XcbConnected {
  XcbConnectionPointer connection;
  /// The number of the display's default screen.
  int screenNumber = 0;
};

/// Main thread; lives as long as the program, so that it remembers servers that do not reply.
class XcbConnector {
 public:
  /// Connects to the display and waits for the server, at most for `timeout`; a server that timed
  /// out before is not waited for again. The error is the end of a sentence about the display, such
  /// as "cannot be reached".
  Result<XcbConnected> connect(const std::string& display, std::chrono::milliseconds timeout) {
    auto connected = call_(
        display, [display] { return connectNow(display); }, timeout);
    if (!connected) {
      return Error{connected.error() == CallFailure::timedOut
                       ? "does not answer"
                       : "cannot be reached: the system cannot start another thread"};
    }
    if (!connected.value().connection) return Error{"cannot be reached"};
    return std::move(connected).value();
  }

 private:
  static XcbConnected connectNow(const std::string& display) {
    XcbConnected connected;
    connected.connection.reset(xcb_connect(display.c_str(), &connected.screenNumber));
    if (xcb_connection_has_error(connected.connection.get())) connected.connection.reset();
    return connected;
  }

  CallWithTimeout<XcbConnected> call_;
};

}  // namespace quillmar
