// The ready-made commands that ship with the application and make its first menu. Main thread.

#pragma once

#include <cstddef>

#include "platform/log.h"

namespace quillmar {

class SettingsManager;
struct Platform;

/// Merges the starter pack into the document and saves that. Returns how many commands the pack
/// holds, separators not counted. Without a pack that can be read (one line is logged when there is
/// a broken one) the document is saved as it is and the answer is 0: in every case the next launch
/// is not the first one.
std::size_t installStarterPack(const Platform& platform, SettingsManager& settings,
                               const LogLine& log);

}  // namespace quillmar
