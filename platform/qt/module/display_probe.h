// Looks, before the toolkit does, whether it will find a display: where it finds none it ends the
// program. Main thread.

#pragma once

#include <string>

#include "platform/environment.h"
#include "platform/result.h"

namespace quillmar {

/// The toolkit's platform plugin to use ("xcb", "wayland"), whose display answered. Waits for it
/// for some seconds at most.
Result<std::string> findDisplay(const Environment& environment);

}  // namespace quillmar
