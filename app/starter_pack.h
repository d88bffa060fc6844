// The ready-made commands that ship with the application and form the first menu. Main thread.

#pragma once

#include <cstddef>

#include "platform/log.h"

namespace quillmar {

class Bundle;
class FileSystem;
class SettingsManager;

/// Merges the starter pack into the document and saves it. Returns the number of commands in the
/// pack, not counting separators. If the pack cannot be read, logs one line, saves the document
/// unchanged and returns 0. The document is saved in every case, so that the next launch is not a
/// first launch.
std::size_t installStarterPack(const Bundle& bundle, const FileSystem& files,
                               SettingsManager& settings, const LogLine& log);

}  // namespace quillmar
