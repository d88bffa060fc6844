// The write of the settings file, in place, so that nothing is lost. An existing file is
// overwritten where it lies: a symbolic link stays one and the mode stays what it is. What makes
// that safe:
//
// - The document that the file held before is kept beside it as "settings.previous.json". Bytes
// that
//   are no document (a file that could not be loaded, or that was torn when the program was killed)
//   are kept as "settings.damaged-<time>.json"; the copy "settings.previous.json", which may then
//   be all that is left of the user's menu, is kept as "settings.previous-<time>.json" before later
//   saves replace it.
// - Room for the new bytes is reserved before the first old one is overwritten.
// - A write that fails midway puts the old bytes back.
// - A file that does not exist yet comes into being whole.
//
// So at any moment either the file or the previous copy is whole. The one exception is a file that
// can be written but not read: nothing of it can be kept. Nothing here reads the copies to load
// them.

#pragma once

#include <chrono>
#include <functional>
#include <optional>
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
  /// does not stop the write. After a failure the file is what it was; where even that fails, the
  /// error names the copy.
  Result<void> overwrite(const std::string& path, std::string_view bytes);

 private:
  Result<void> writeInPlace(const std::string& path, std::string_view bytes,
                            const std::optional<std::string>& oldBytes,
                            const std::optional<std::string>& copyPath);
  std::optional<std::string> keepCopy(const std::string& path, const std::string& bytes);
  std::string freePath(const std::string& path, const std::string& suffix) const;

  FileSystem& files_;
  Clock now_;
};

}  // namespace quillmar
