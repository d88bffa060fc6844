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

/// Timeout for calls to the bus daemon, which replies at once unless it hangs.
inline constexpr std::chrono::milliseconds busTimeout = std::chrono::seconds(5);

/// Address of the session bus: DBUS_SESSION_BUS_ADDRESS or, if that is unset or empty, the socket
/// "bus" in XDG_RUNTIME_DIR if this user owns it. Absent if there is none; no bus is started.
std::optional<std::string> sessionBusAddress(const Environment& environment);

/// Opens a new connection. The process does not exit when the bus closes it. Waits at most
/// `timeout`. The error is a sentence without its full stop, such as "There is no session bus".
Result<GObjectPtr<GDBusConnection>> connectToSessionBus(
    const Environment& environment, std::chrono::milliseconds timeout = busTimeout);

/// Calls a method of the bus daemon and waits at most `timeout` for the reply. `arguments` is a
/// tuple; a floating reference is consumed. The error begins a sentence. The bus handles the
/// messages of a connection in order, so the reply also confirms all earlier messages.
Result<GVariantPtr> askSessionBus(GDBusConnection* connection, const char* method,
                                  GVariant* arguments, const char* resultType,
                                  std::chrono::milliseconds timeout = busTimeout);

}  // namespace quillmar
