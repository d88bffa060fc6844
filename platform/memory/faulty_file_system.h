// A forwarding file system with fault injection: failing calls, a full disk, and a program that is
// killed midway. One thread.

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
  createPrivateDirectory,
  read,
  permissions,
  replace,
  openForOverwriting,
  reserve,
  write,
  setLength,
  finish,
};

/// All injected faults apply together. The wrapped file system must outlive this object, and this
/// object must outlive the files opened through it.
class FaultyFileSystem final : public FileSystem {
 public:
  static constexpr std::string_view noSpaceLeft = "No space left on device";

  explicit FaultyFileSystem(FileSystem& files) : files_(files) {}

  /// Makes the `nth` next call of the operation (1 is the next one) fail without an effect.
  void failCall(FileOperation operation, int nth = 1, Error error = {"The call was made to fail."});

  /// Makes every call of the operation fail without an effect. A failing `reserve` is a full disk
  /// that is detected in advance.
  void failEveryCall(FileOperation operation, Error error = {"The call was made to fail."});

  /// Limits the space for `write` and `replace` to this many more bytes: a `write` that does not
  /// fit writes a part and fails; a `replace` that does not fit has no effect.
  void limitSpace(std::uint64_t bytes) { space_ = bytes; }

  /// Simulates a kill after this many more steps. A step is one call of createDirectories,
  /// createPrivateDirectory, replace, openForOverwriting, reserve, write or setLength. If the next
  /// step is a write, its first `bytesOfNextWrite` bytes are still written. Later steps have no
  /// effect but report success, so that the caller runs to its end and the wrapped file system
  /// holds what a kill would have left.
  void killAfterSteps(std::uint64_t steps, std::uint64_t bytesOfNextWrite = 0);

  /// Number of steps so far.
  std::uint64_t stepCount() const { return stepCount_; }

  bool exists(const std::string& path) const override { return files_.exists(path); }
  bool isExecutableFile(const std::string& path) const override {
    return files_.isExecutableFile(path);
  }
  Result<void> createDirectories(const std::string& path) override;
  Result<void> createPrivateDirectory(const std::string& path) override;
  Result<std::string> read(const std::string& path) const override;
  Result<std::uint32_t> permissions(const std::string& path) const override;
  Result<void> replace(const std::string& path, std::string_view bytes,
                       std::optional<std::uint32_t> permissions) override;
  Result<std::unique_ptr<FileOverwrite>> openForOverwriting(const std::string& path) override;

 private:
  class Overwrite;

  /// A pending failure. `callsLeft` counts down to the call that fails; 0 for every call.
  struct Failure {
    int callsLeft = 0;
    Error error;
  };

  std::optional<Error> nextFailure(FileOperation operation) const;
  bool isAlive();

  FileSystem& files_;
  mutable std::map<FileOperation, Failure> failures_;
  std::optional<std::uint64_t> space_;
  std::optional<std::uint64_t> stepsToLive_;
  std::uint64_t bytesOfLastWrite_ = 0;
  bool isDead_ = false;
  std::uint64_t stepCount_ = 0;
};

}  // namespace quillmar
