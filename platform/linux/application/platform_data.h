// The "platform data" that a call of org.freedesktop.Application carries: the caller's leave to
// come to the front, and how long its wish holds.

#pragma once

#include <chrono>

#include <gio/gio.h>

#include "platform/application.h"
#include "platform/environment.h"

namespace quillmar {

/// A vardict, floating, that hands on what the environment holds from whoever started this process,
/// XDG_ACTIVATION_TOKEN and DESKTOP_STARTUP_ID.
GVariant* platformData(const Environment& environment);

/// The same, for a request that expires after `timeout`.
GVariant* platformData(const Environment& environment, std::chrono::milliseconds timeout);

/// What this process was started with.
Activation activationOf(const Environment& environment);

/// The environment without it, in this process as well: one leave is for one program, not for the
/// commands and helpers that it starts. Before other threads run.
Environment withoutActivation(Environment environment);

/// The activation in a vardict; empty when there is none. Entries of other types are ignored.
Activation activationIn(GVariant* platformData);

/// True when the caller no longer wants what it asked for.
bool hasExpired(GVariant* platformData);

}  // namespace quillmar
