// Whether a display is there and answers. Each waits a few seconds at the most.

#pragma once

#include <optional>
#include <string>

#include "platform/environment.h"

namespace quillmar {

/// What is wrong with the X server of that name, as the end of a sentence; nothing when it answers.
std::optional<std::string> problemWithX11(const std::string& display);

/// The same of the Wayland server that the environment names.
std::optional<std::string> problemWithWayland(const Environment& environment);

}  // namespace quillmar
