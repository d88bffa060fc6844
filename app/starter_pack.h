// The ready-made commands that ship with the application and make its first menu. Main thread.

#pragma once

#include <cstddef>

#include "platform/log.h"

namespace quillmar {

class Bundle;
class FileSystem;
class SettingsManager;

/// Merges the starter pack into the document and saves that. Returns how many commands the pack
/// holds, separators not counted. Without a pack that can be read (one line is logged when there is
/// a broken one) the document is saved as it is and the answer is 0: in every case the next launch
/// is not the first one.
std::size_t installStarterPack(const Bundle& bundle, const FileSystem& files,
                               SettingsManager& settings, const LogLine& log);

}  // namespace quillmar
