// Which of the toolkit's platform plugins can show windows here. The toolkit ends the program if
// none can, so this is determined before it starts. Main thread.

#pragma once

#include <string>
#include <vector>

#include "platform/environment.h"
#include "platform/result.h"
#include "platform/xcb/xcb_pointers.h"

namespace quillmar {

/// The platforms that the environment asks for, in the toolkit's order, followed by the other
/// available display. Options after a colon belong to the name. Empty without a display.
std::vector<std::string> wantedPlatforms(const Environment& environment);

struct UsablePlatform {
  std::string name;
  /// The connection that the X server was probed with; null on other platforms. Keep it until the
  /// toolkit has its own: see probeX11().
  XcbConnectionPointer probe;
};

/// The first of the wanted platforms whose plugin can be loaded and whose display replies. Waits a
/// few seconds for a display that does not. The error is a sentence about the first one.
Result<UsablePlatform> usablePlatform(const Environment& environment);

}  // namespace quillmar
