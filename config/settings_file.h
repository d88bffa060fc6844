// The write of the settings file, in place, so that nothing is lost. The file is overwritten where
// it lies: a symbolic link stays one and the mode stays what it is. What makes that safe:
//
// - The document that the file held before is kept beside it as "settings.previous.json". Bytes
// that
//   are no document (a file that could not be loaded) are kept as "settings.damaged-<time>.json".
// - Room for the new bytes is reserved before the first old one is overwritten.
// - A write that fails midway puts the old bytes back.
//
// So at any moment either the file or the previous copy is whole. Nothing here reads the copies.

#pragma once

#include <chrono>
#include <functional>
#include <string>
#include <string_view>

#include "platform/file_system.h"
#include "platform/result.h"

namespace quillmar {

class SettingsFile {
 public:
  using Clock = std::function<std::chrono::system_clock::time_point()>;

  /// The file system is not owned and must outlive this object.
  explicit SettingsFile(FileSystem& files, Clock now = std::chrono::system_clock::now);

  /// Replaces the contents of the file at `path`, or makes the file. A copy that cannot be kept
  /// does not stop the write. After a failure the file is what it was, or does not exist if it did
  /// not.
  Result<void> overwrite(const std::string& path, std::string_view bytes);

 private:
  void keepCopy(const std::string& path, const std::string& bytes);
  std::string freeDamagedPath(const std::string& path) const;

  FileSystem& files_;
  Clock now_;
};

}  // namespace quillmar
