// A file system that forwards to another one and fails when told to: single calls, a disk that
// fills up, and a program that is killed half-way. For one thread.

#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/file_system.h"

namespace quillmar {

enum class FileOperation {
  createDirectories,
  read,
  permissions,
  replace,
  openForOverwriting,
  reserve,
  write,
  setLength,
  finish,
};

/// The faults that are set apply together. The wrapped file system must outlive this one, and this
/// one the files opened through it.
class FaultyFileSystem final : public FileSystem {
 public:
  static constexpr std::string_view noSpaceLeft = "No space left on device";

  explicit FaultyFileSystem(FileSystem& files) : files_(files) {}

  /// Lets the `nth` call of the operation from now on (1 is the next one) fail without an effect.
  void failCall(FileOperation operation, int nth = 1, Error error = {"The call was made to fail."});

  /// Lets every call of the operation fail without an effect; a refused `reserve` is a full disk
  /// that says so beforehand.
  void failEveryCall(FileOperation operation, Error error = {"The call was made to fail."});

  /// Lets `write` and `replace` find room for this many more bytes: a `write` puts down those that
  /// fit and fails, a `replace` that does not fit has no effect.
  void limitRoom(std::uint64_t bytes) { room_ = bytes; }

  /// Kills the program after this many more steps. A step is one call of createDirectories,
  /// replace, openForOverwriting, reserve, write or setLength. Of the step after those, if
  /// it is a write, the first `bytesOfNextWrite` bytes still land. From then on steps have no
  /// effect but claim success, so that the caller runs to its end and what lies in the wrapped file
  /// system is what the kill would have left.
  void dieAfterSteps(std::uint64_t steps, std::uint64_t bytesOfNextWrite = 0);

  /// How many steps have been called so far.
  std::uint64_t stepCount() const { return stepCount_; }

  bool exists(const std::string& path) const override { return files_.exists(path); }
  bool isExecutableFile(const std::string& path) const override {
    return files_.isExecutableFile(path);
  }
  Result<void> createDirectories(const std::string& path) override;
  Result<std::string> read(const std::string& path) const override;
  Result<std::uint32_t> permissions(const std::string& path) const override;
  Result<void> replace(const std::string& path, std::string_view bytes,
                       std::optional<std::uint32_t> permissions) override;
  Result<std::unique_ptr<FileOverwrite>> openForOverwriting(const std::string& path) override;

 private:
  class Overwrite;

  /// A failure that waits for its call; 0 is every call.
  struct Failure {
    int callsLeft = 0;
    Error error;
  };

  std::optional<Error> nextFailure(FileOperation operation) const;
  bool isAlive();

  FileSystem& files_;
  mutable std::map<FileOperation, Failure> failures_;
  std::optional<std::uint64_t> room_;
  std::optional<std::uint64_t> stepsToLive_;
  std::uint64_t bytesOfLastWrite_ = 0;
  bool isDead_ = false;
  std::uint64_t stepCount_ = 0;
};

}  // namespace quillmar
