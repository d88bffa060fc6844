// Whether a display exists and replies. Each function waits a few seconds at most.

#pragma once

#include <optional>
#include <string>

#include "platform/environment.h"
#include "platform/result.h"
#include "platform/xcb/xcb_pointers.h"

namespace quillmar {

/// A connection to the X server, or what is wrong with the server, as the end of a sentence. Keep
/// the connection until the toolkit has its own: a server whose last client disconnects resets
/// itself, and refuses connections meanwhile.
Result<XcbConnectionPointer> probeX11(const std::string& display);

/// What is wrong with the Wayland server that the environment names, as the end of a sentence;
/// absent if it replies.
std::optional<std::string> problemWithWayland(const Environment& environment);

}  // namespace quillmar
