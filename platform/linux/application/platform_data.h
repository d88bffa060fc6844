// The "platform data" of an org.freedesktop.Application call: the caller's activation, and the time
// at which its request expires.

#pragma once

#include <chrono>

#include <gio/gio.h>

#include "platform/application.h"
#include "platform/environment.h"

namespace quillmar {

/// A floating vardict with the activation that this process was started with: XDG_ACTIVATION_TOKEN
/// and DESKTOP_STARTUP_ID.
GVariant* platformData(const Environment& environment);

/// The same, for a request that expires after `timeout`.
GVariant* platformData(const Environment& environment, std::chrono::milliseconds timeout);

/// The activation that this process was started with.
Activation activationOf(const Environment& environment);

/// Returns the environment without the activation, and unsets its variables in this process too. A
/// token is for one program, not for the commands and processes that it starts. Call before other
/// threads run.
Environment withoutActivation(Environment environment);

/// The activation in a vardict; empty if there is none. Entries of other types are ignored.
Activation activationIn(GVariant* platformData);

/// True if the caller's request has expired.
bool hasExpired(GVariant* platformData);

}  // namespace quillmar
