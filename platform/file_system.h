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

/// A file that is being overwritten in place, so that its identity, mode and owner stay. The
/// destructor closes it.
class FileOverwrite {
 public:
  virtual ~FileOverwrite() = default;

  /// Reserves disk space for a file of `size` bytes without changing its bytes or its length. Fails
  /// only for lack of space or quota; succeeds where the file system cannot reserve.
  virtual Result<void> reserve(std::uint64_t size) = 0;

  /// Writes all of `bytes` at the offset. On failure some of them may have been written.
  virtual Result<void> write(std::uint64_t offset, std::string_view bytes) = 0;

  /// Makes the file `size` bytes long.
  virtual Result<void> setLength(std::uint64_t size) = 0;

  /// Closes the file and returns whether all data was accepted: network file systems may report a
  /// lack of space only now. The last call.
  virtual Result<void> finish() = 0;
};

/// Larger files are not read.
inline constexpr std::uint64_t maximumFileSize = std::uint64_t{64} << 20;

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// True if a file or folder is at the path, or if the system does not allow a look: opening the
  /// path then reports why. False if nothing can be there, so also for a path below a regular file,
  /// a path that is too long, and a symbolic link that leads to itself.
  virtual bool exists(const std::string& path) const = 0;

  /// True when the path is a regular file that this user may execute.
  virtual bool isExecutableFile(const std::string& path) const = 0;

  /// Creates the folder and every missing one above it; an existing folder is fine.
  virtual Result<void> createDirectories(const std::string& path) = 0;

  /// The whole file. Fails with ErrorKind::tooLarge if it is larger than maximumFileSize. The
  /// string has spare capacity of at least 64 bytes behind its end, so that a parser that reads
  /// ahead needs no copy.
  virtual Result<std::string> read(const std::string& path) const = 0;

  /// The permission bits of the file (07777).
  virtual Result<std::uint32_t> permissions(const std::string& path) const = 0;

  /// Creates or replaces the file in one step: a temporary file beside it, with these permission
  /// bits (the default ones of new files when absent), is written, flushed to the disk and renamed
  /// over it. The folder is flushed too, so that the file survives a power failure. On failure the
  /// old file is untouched and no temporary file stays.
  virtual Result<void> replace(const std::string& path, std::string_view bytes,
                               std::optional<std::uint32_t> permissions) = 0;

  /// Opens the file for overwriting, creating it with default permissions if it is missing. Opening
  /// an existing file does not change it.
  virtual Result<std::unique_ptr<FileOverwrite>> openForOverwriting(const std::string& path) = 0;
};

}  // namespace quillmar
