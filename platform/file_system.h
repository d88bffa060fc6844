// Files and folders. Paths are byte strings as the system takes them; relative ones resolve against
// the working directory. Symbolic links are followed everywhere. Any thread.

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/result.h"

namespace quillmar {

/// An existing or new file that is being overwritten in place: its identity, mode and owner stay.
/// Destroying it closes the file.
class FileOverwrite {
 public:
  virtual ~FileOverwrite() = default;

  /// Makes room on the disk for a file of `size` bytes without changing a byte of it or its length.
  /// Fails only for lack of room or quota; where the file system cannot reserve, it succeeds.
  virtual Result<void> reserve(std::uint64_t size) = 0;

  /// Writes all of `bytes` at the offset. On failure some of them may have been written.
  virtual Result<void> write(std::uint64_t offset, std::string_view bytes) = 0;

  /// Makes the file `size` bytes long.
  virtual Result<void> setLength(std::uint64_t size) = 0;

  /// Closes the file and tells whether everything written has been taken: network file systems may
  /// say only now that there was no room. The last call.
  virtual Result<void> finish() = 0;
};

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// False when nothing is at the path for certain. True when something, a file or a folder, is
  /// there, and when the system does not let one look: whoever opens it then hears why.
  virtual bool exists(const std::string& path) const = 0;

  /// True when the path is a regular file that this user may execute.
  virtual bool isExecutableFile(const std::string& path) const = 0;

  /// Makes the folder and every missing one above it; an existing folder is fine.
  virtual Result<void> createDirectories(const std::string& path) = 0;

  /// The whole file. The string has spare capacity of at least 64 bytes behind its end, so that a
  /// parser which reads ahead needs no copy.
  virtual Result<std::string> read(const std::string& path) const = 0;

  /// The permission bits of the file (07777).
  virtual Result<std::uint32_t> permissions(const std::string& path) const = 0;

  /// Replaces the file, or makes it, in one step: a temporary file beside it with these permission
  /// bits (a new file's default ones when absent) is written, brought to the disk and renamed over
  /// it. On failure the old file is untouched and no temporary file stays.
  virtual Result<void> replace(const std::string& path, std::string_view bytes,
                               std::optional<std::uint32_t> permissions) = 0;

  /// Opens the file for overwriting, making it (default permissions) when it is missing. Opening
  /// changes nothing in an existing file.
  virtual Result<std::unique_ptr<FileOverwrite>> openForOverwriting(const std::string& path) = 0;
};

}  // namespace quillmar
