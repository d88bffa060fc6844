// Which of the toolkit's platform plugins can show windows here. The toolkit ends the program when
// none can, so it is asked only once that is settled. Main thread.

#pragma once

#include <string>
#include <vector>

#include "platform/environment.h"
#include "platform/result.h"

namespace quillmar {

/// The platforms that the environment asks for, in the toolkit's order, and behind them the other
/// display that there is. Options behind a colon belong to the name. Empty without a display.
std::vector<std::string> wantedPlatforms(const Environment& environment);

/// The first of them whose plugin can be loaded and whose display answers. Waits some seconds for a
/// display that hangs. The error is a sentence that names what is wrong with the first.
Result<std::string> usablePlatform(const Environment& environment);

}  // namespace quillmar
