// Talking to objects on a bus. Everything runs on the default main context of the test's thread; a
// call runs it until the answer is there, so that the called object may live in the same program.

#pragma once

#include <string>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

struct BusReply {
  /// The answer's tuple; null after an error.
  GVariantPtr value;
  /// The error's D-Bus name; empty for none.
  std::string errorName;
  std::string errorMessage;
};

/// Where a call goes.
struct BusAddress {
  std::string destination;
  std::string path;
  std::string interface;
};

/// Calls and runs the main context until the answer is there. Takes floating arguments, null for
/// none.
BusReply callOnBus(GDBusConnection* connection, const BusAddress& address, const char* method,
                   GVariant* arguments);

/// Reads a property; null after an error.
GVariantPtr readPropertyOnBus(GDBusConnection* connection, const BusAddress& address,
                              const char* property);

/// Returns when everything that was sent to the connection before has been dispatched.
void settle(GDBusConnection* connection);

}  // namespace quillmar
