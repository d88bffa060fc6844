// Connecting to the session bus. Main thread; no events are dispatched while it waits.

#pragma once

#include <chrono>
#include <optional>
#include <string>

#include <gio/gio.h>

#include "platform/environment.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/result.h"

namespace quillmar {

/// Timeout for the bus itself, which replies at once unless it hangs.
inline constexpr std::chrono::milliseconds busTimeout = std::chrono::seconds(5);

/// Where the session bus is: what DBUS_SESSION_BUS_ADDRESS says or, when that is not set or empty,
/// the socket "bus" of this user in XDG_RUNTIME_DIR. Absent when there is none; nothing starts one.
std::optional<std::string> sessionBusAddress(const Environment& environment);

/// A new connection, which does not end this process when the bus goes away. Waits for `timeout` at
/// most. The error is a sentence without its full stop, such as "There is no session bus".
Result<GObjectPtr<GDBusConnection>> connectToSessionBus(
    const Environment& environment, std::chrono::milliseconds timeout = busTimeout);

/// Calls a method of the bus itself and waits for the answer, for `timeout` at most.
/// `arguments` is a tuple, taken over when floating. The error begins a sentence. The bus handles
/// the messages of one connection in order: with the answer it has taken all that was sent before.
Result<GVariantPtr> askSessionBus(GDBusConnection* connection, const char* method,
                                  GVariant* arguments, const char* resultType,
                                  std::chrono::milliseconds timeout = busTimeout);

}  // namespace quillmar
