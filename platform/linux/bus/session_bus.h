// The way to the session bus. Main thread; waiting for the bus dispatches nothing.

#pragma once

#include <chrono>
#include <optional>
#include <string>

#include <gio/gio.h>

#include "platform/environment.h"
#include "platform/linux/bus/glib_pointers.h"
#include "platform/result.h"

namespace quillmar {

/// How long a program waits for the bus itself, which answers at once unless it hangs.
inline constexpr std::chrono::milliseconds busPatience = std::chrono::seconds(5);

/// Where the session bus is: what DBUS_SESSION_BUS_ADDRESS says or, when that is not set or empty,
/// the socket "bus" of this user in XDG_RUNTIME_DIR. Absent when there is none; nothing starts one.
std::optional<std::string> sessionBusAddress(const Environment& environment);

/// A connection of the caller's own, which does not end this process when the bus goes away. Waits
/// for `patience` at most. The error begins a sentence: "There is no session bus", for example.
Result<GObjectPtr<GDBusConnection>> connectToSessionBus(
    const Environment& environment, std::chrono::milliseconds patience = busPatience);

/// Calls a method of the bus itself and waits for the answer, for `patience` at most.
/// `arguments` is a tuple, taken over when floating. The error begins a sentence. The bus handles
/// the messages of one connection in order: with the answer it has taken all that was sent before.
Result<GVariantPtr> askSessionBus(GDBusConnection* connection, const char* method,
                                  GVariant* arguments, const char* resultType,
                                  std::chrono::milliseconds patience = busPatience);

}  // namespace quillmar
