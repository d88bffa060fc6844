// Files and folders. Paths are the system's byte strings; relative ones resolve against the working
// directory. Symbolic links are followed except where stated. Any thread.

#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/result.h"

namespace quillmar {

/// A file that is overwritten in place, so that its inode, mode and owner do not change. The
/// destructor closes it.
class FileOverwrite {
 public:
  virtual ~FileOverwrite() = default;

  /// Reserves disk space for a file of `size` bytes without changing its bytes or its length. Fails
  /// only if space or quota is exceeded; succeeds on file systems that cannot reserve space.
  virtual Result<void> reserve(std::uint64_t size) = 0;

  /// Writes all of `bytes` at the offset. On failure some of them may have been written.
  virtual Result<void> write(std::uint64_t offset, std::string_view bytes) = 0;

  /// Truncates or extends the file to `size` bytes.
  virtual Result<void> setLength(std::uint64_t size) = 0;

  /// Closes the file. Fails if data could not be stored: network file systems may report a full
  /// disk only now. Must be the last call.
  virtual Result<void> finish() = 0;
};

/// Larger files are not read.
inline constexpr std::uint64_t maximumFileSize = std::uint64_t{64} << 20;

class FileSystem {
 public:
  virtual ~FileSystem() = default;

  /// True if a file or folder exists at the path, or if the system denies access to it: opening the
  /// path then reports the reason. False if nothing can exist there, such as below a regular file,
  /// for a path that is too long, or for a symbolic link to itself.
  virtual bool exists(const std::string& path) const = 0;

  /// True if the path is a regular file that this user may execute.
  virtual bool isExecutableFile(const std::string& path) const = 0;

  /// Creates the folder and all missing parents. Succeeds if the folder exists.
  virtual Result<void> createDirectories(const std::string& path) = 0;

  /// Creates a folder with the permissions 0700 and all missing parents. A folder that exists must
  /// be one in which no other user can read or replace files: not a symbolic link, owned by this
  /// user, and with these permissions. Otherwise fails with the reason and changes nothing.
  virtual Result<void> createPrivateDirectory(const std::string& path) = 0;

  /// Reads the whole file. Fails with ErrorKind::tooLarge if it is larger than maximumFileSize. The
  /// string has a spare capacity of at least 64 bytes, so that a parser that reads beyond the end
  /// needs no copy.
  virtual Result<std::string> read(const std::string& path) const = 0;

  /// The permission bits of the file (07777).
  virtual Result<std::uint32_t> permissions(const std::string& path) const = 0;

  /// Creates or replaces the file atomically: writes a temporary file in the same folder, flushes
  /// it to the disk and renames it. The folder is flushed too, so that the file survives a power
  /// failure. Absent permissions mean those of a new file. On failure the old file is unchanged and
  /// no temporary file is left.
  virtual Result<void> replace(const std::string& path, std::string_view bytes,
                               std::optional<std::uint32_t> permissions) = 0;

  /// Opens the file for overwriting, creating it with default permissions if it is missing. Opening
  /// an existing file does not change it.
  virtual Result<std::unique_ptr<FileOverwrite>> openForOverwriting(const std::string& path) = 0;
};

}  // namespace quillmar
