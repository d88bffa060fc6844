#include "platform/memory/faulty_file_system.h"

#include <utility>

#include "platform/error_text.h"

namespace quillmar {

/// An open file; `file` is null if it was opened after the kill.
class FaultyFileSystem::Overwrite final : public FileOverwrite {
 public:
  Overwrite(FaultyFileSystem& owner, std::string path, std::unique_ptr<FileOverwrite> file)
      : owner_(owner), path_(std::move(path)), file_(std::move(file)) {}

  Result<void> reserve(std::uint64_t size) override {
    if (auto error = owner_.nextFailure(FileOperation::reserve)) return *std::move(error);
    if (!owner_.isAlive()) return {};
    return file_->reserve(size);
  }

  Result<void> write(std::uint64_t offset, std::string_view bytes) override {
    if (auto error = owner_.nextFailure(FileOperation::write)) return *std::move(error);
    const bool wasDead = owner_.isDead_;
    if (!owner_.isAlive()) {
      if (wasDead || owner_.bytesOfLastWrite_ == 0) return {};
      return file_->write(offset, bytes.substr(0, owner_.bytesOfLastWrite_));
    }
    const std::string_view fitting = bytes.substr(0, owner_.space_.value_or(bytes.size()));
    if (owner_.space_) *owner_.space_ -= fitting.size();
    Result<void> written = file_->write(offset, fitting);
    if (!written || fitting.size() == bytes.size()) return written;
    return fileError(path_, "written", noSpaceLeft, ErrorKind::noSpace);
  }

  Result<void> setLength(std::uint64_t size) override {
    if (auto error = owner_.nextFailure(FileOperation::setLength)) return *std::move(error);
    if (!owner_.isAlive()) return {};
    return file_->setLength(size);
  }

  Result<void> finish() override {
    if (auto error = owner_.nextFailure(FileOperation::finish)) return *std::move(error);
    return file_ ? file_->finish() : Result<void>();
  }

 private:
  FaultyFileSystem& owner_;
  std::string path_;
  std::unique_ptr<FileOverwrite> file_;
};

void FaultyFileSystem::failCall(FileOperation operation, int nth, Error error) {
  failures_.insert_or_assign(operation, Failure{nth, std::move(error)});
}

void FaultyFileSystem::failEveryCall(FileOperation operation, Error error) {
  failures_.insert_or_assign(operation, Failure{0, std::move(error)});
}

void FaultyFileSystem::killAfterSteps(std::uint64_t steps, std::uint64_t bytesOfNextWrite) {
  stepsToLive_ = steps;
  bytesOfLastWrite_ = bytesOfNextWrite;
  isDead_ = false;
}

/// Counts a call of the operation; returns its error if it must fail.
std::optional<Error> FaultyFileSystem::nextFailure(FileOperation operation) const {
  const auto found = failures_.find(operation);
  if (found == failures_.end()) return std::nullopt;
  Failure& failure = found->second;
  if (failure.callsLeft == 0) return failure.error;
  if (--failure.callsLeft > 0) return std::nullopt;
  Error error = std::move(failure.error);
  failures_.erase(found);
  return error;
}

/// Counts a step; returns false if the kill came before it.
bool FaultyFileSystem::isAlive() {
  ++stepCount_;
  if (!stepsToLive_) return true;
  isDead_ = *stepsToLive_ == 0;
  if (!isDead_) --*stepsToLive_;
  return !isDead_;
}

Result<void> FaultyFileSystem::createDirectories(const std::string& path) {
  if (auto error = nextFailure(FileOperation::createDirectories)) return *std::move(error);
  if (!isAlive()) return {};
  return files_.createDirectories(path);
}

Result<void> FaultyFileSystem::createPrivateDirectory(const std::string& path) {
  if (auto error = nextFailure(FileOperation::createPrivateDirectory)) return *std::move(error);
  if (!isAlive()) return {};
  return files_.createPrivateDirectory(path);
}

Result<std::string> FaultyFileSystem::read(const std::string& path) const {
  if (auto error = nextFailure(FileOperation::read)) return *std::move(error);
  return files_.read(path);
}

Result<std::uint32_t> FaultyFileSystem::permissions(const std::string& path) const {
  if (auto error = nextFailure(FileOperation::permissions)) return *std::move(error);
  return files_.permissions(path);
}

Result<void> FaultyFileSystem::replace(const std::string& path, std::string_view bytes,
                                       std::optional<std::uint32_t> permissions) {
  if (auto error = nextFailure(FileOperation::replace)) return *std::move(error);
  if (!isAlive()) return {};
  if (space_) {
    if (*space_ < bytes.size()) return fileError(path, "written", noSpaceLeft, ErrorKind::noSpace);
    *space_ -= bytes.size();
  }
  return files_.replace(path, bytes, permissions);
}

Result<std::unique_ptr<FileOverwrite>> FaultyFileSystem::openForOverwriting(
    const std::string& path) {
  if (auto error = nextFailure(FileOperation::openForOverwriting)) return *std::move(error);
  std::unique_ptr<FileOverwrite> file;
  if (isAlive()) {
    Result<std::unique_ptr<FileOverwrite>> opened = files_.openForOverwriting(path);
    if (!opened) return opened;
    file = std::move(opened).value();
  }
  return std::unique_ptr<FileOverwrite>(std::make_unique<Overwrite>(*this, path, std::move(file)));
}

}  // namespace quillmar
