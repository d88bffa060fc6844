// Loads and saves the settings file so that nothing is lost. A save overwrites an existing file in
// place, which preserves symbolic links and the mode. What makes that safe:
//
// - The old contents are first copied to a file in the same folder. Contents that this program
//   loaded or wrote are copied to "settings.previous.json". Contents that could not be decoded are
//   copied to "settings.damaged-<time>.json"; the existing "settings.previous.json", which may then
//   be the only valid copy of the user's menu, is copied to "settings.previous-<time>.json" before
//   later saves replace it. Contents that another program wrote in the meantime are copied to
//   "settings.edited-<time>.json".
// - If the disk has no space for the copy or fails, nothing is overwritten. If the user may not
//   create files in the folder, the save continues without a copy.
// - Space for the new bytes is reserved before the first old one is overwritten.
// - A partly written file does not decode, because its first byte is written last.
// - A write that fails midway restores the old bytes.
// - A file that does not exist yet is created complete or not at all.
//
// So at any time the file or its copy is complete. Exceptions: if the file is not readable, or the
// user may not create files in the folder, there is no copy. The copies are never loaded
// automatically.

#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "config/quillmar_config.h"
#include "platform/file_system.h"
#include "platform/log.h"
#include "platform/result.h"
#include "platform/uuid.h"

namespace quillmar {

/// Main thread.
class SettingsFile {
 public:
  using Clock = std::function<std::chrono::system_clock::time_point()>;

  /// The file system is not owned and must outlive this object.
  SettingsFile(FileSystem& files, LogLine log, Clock now = std::chrono::system_clock::now);

  /// Reads and decodes the file, and remembers its contents. The error names the file.
  Result<QuillmarConfig> load(const std::string& path,
                              const std::function<std::string()>& makeIdentifier = makeUuid);

  /// Replaces the contents of the file at `path`, or creates the file. On failure the old contents
  /// are restored; if that fails too, the error names the copy. Fails with ErrorKind::tooLarge if
  /// the file could not be loaded again. Logs one line if another program changed the file.
  Result<void> overwrite(const std::string& path, std::string_view bytes);

 private:
  /// Identifies the contents of a file without keeping them in memory.
  struct Contents {
    std::size_t size = 0;
    std::size_t hash = 0;

    bool operator==(const Contents&) const = default;
  };

  static Contents contentsOf(std::string_view bytes);

  Result<void> overwriteExisting(const std::string& path, std::string_view bytes);
  Result<void> writeInPlace(const std::string& path, std::string_view bytes,
                            std::optional<std::string_view> oldBytes,
                            const std::optional<std::string>& copyPath);
  /// Copies the contents of the file and returns the path of the copy.
  Result<std::string> keepCopy(const std::string& path, const std::string& bytes);
  Result<std::string> keepDamaged(const std::string& path, const std::string& bytes);
  Result<std::string> keepEdited(const std::string& path, const std::string& bytes);
  Result<std::string> copyTo(const std::string& copyPath, const std::string& original,
                             std::string_view bytes);
  std::string freePath(const std::string& path, const std::string& suffix) const;

  FileSystem& files_;
  LogLine log_;
  Clock now_;
  /// The contents that were last loaded or written.
  std::optional<Contents> known_;
  /// True if the loaded contents could not be decoded.
  bool isDamaged_ = false;
  /// The damaged or edited contents that a failed save has already copied, and the path of the
  /// copy.
  std::optional<std::pair<Contents, std::string>> kept_;
};

}  // namespace quillmar
