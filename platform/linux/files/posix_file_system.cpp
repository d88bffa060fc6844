#include "platform/linux/files/posix_file_system.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <optional>
#include <system_error>
#include <utility>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include "platform/error_text.h"
#include "platform/file_descriptor.h"
#include "platform/linux/files/system_error.h"

namespace quillmar {

namespace {

constexpr std::size_t spareCapacity = 64;
constexpr mode_t permissionBits = 07777;
constexpr mode_t newFilePermissions = 0666;
constexpr mode_t privateFilePermissions = 0600;
constexpr mode_t privateFolderPermissions = 0700;
constexpr int maximumLinks = 40;

/// The path as a C string for system calls. A path with a U+0000 names no file; it becomes the
/// empty path, which never exists.
const char* systemPath(const std::string& path) {
  return path.find('\0') == std::string::npos ? path.c_str() : "";
}

std::optional<struct stat> statusOf(const std::string& path) {
  struct stat status {};
  if (stat(systemPath(path), &status) < 0) return std::nullopt;
  return status;
}

Error systemFileError(std::string_view path, std::string_view done, int number) {
  return fileError(path, done, systemErrorText(number), systemErrorKind(number));
}

/// Why a file of this type cannot be read or written; empty for a regular file.
std::string obstacleInType(mode_t mode) {
  if (S_ISREG(mode)) return "";
  return S_ISDIR(mode) ? systemErrorText(EISDIR) : "It is not a regular file";
}

/// Why the entry is not a private folder of this user; empty if it is one.
std::string obstacleInPrivacy(const struct stat& status) {
  constexpr mode_t accessBits = 0777;
  if (S_ISLNK(status.st_mode)) return std::string(symbolicLinkReason);
  if (!S_ISDIR(status.st_mode)) return systemErrorText(ENOTDIR);
  if (status.st_uid != geteuid()) return std::string(foreignFolderReason);
  const mode_t access = status.st_mode & accessBits;
  return access == privateFolderPermissions ? "" : openFolderReason(access);
}

/// Opens a regular file. Its type is checked before opening, because opening alone can wake a
/// device or the other end of a pipe, and again afterwards. `done` is the verb of the error
/// message.
Result<FileDescriptor> openRegularFile(const std::string& path, int flags, std::string_view done) {
  if (const auto status = statusOf(path)) {
    const std::string obstacle = obstacleInType(status->st_mode);
    if (!obstacle.empty()) return fileError(path, done, obstacle);
  }
  FileDescriptor file(
      open(systemPath(path), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, newFilePermissions));
  struct stat status {};
  if (!file || fstat(file.number(), &status) < 0) return systemFileError(path, done, errno);
  const std::string obstacle = obstacleInType(status.st_mode);
  if (!obstacle.empty()) return fileError(path, done, obstacle);
  return file;
}

/// Reads into the buffer until it is full or the file ends; the count, or -1 with errno.
ssize_t readFully(int file, char* buffer, std::size_t size) {
  std::size_t done = 0;
  while (done < size) {
    const ssize_t count = ::read(file, buffer + done, size - done);
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return -1;
    if (count == 0) break;
    done += static_cast<std::size_t>(count);
  }
  return static_cast<ssize_t>(done);
}

/// Writes all of the bytes; 0 or the error number.
int writeFully(int file, std::uint64_t offset, std::string_view bytes) {
  while (!bytes.empty()) {
    const ssize_t count = pwrite(file, bytes.data(), bytes.size(), static_cast<off_t>(offset));
    if (count < 0 && errno == EINTR) continue;
    if (count < 0) return errno;
    offset += static_cast<std::uint64_t>(count);
    bytes.remove_prefix(static_cast<std::size_t>(count));
  }
  return 0;
}

/// Follows a chain of symbolic links to its end, which need not exist.
std::string followLinks(std::string path) {
  for (int links = 0; links < maximumLinks; ++links) {
    std::error_code notALink;
    const std::filesystem::path target = std::filesystem::read_symlink(path, notALink);
    if (notALink) break;
    path = (std::filesystem::path(path).parent_path() / target).string();
  }
  return path;
}

class PosixFileOverwrite final : public FileOverwrite {
 public:
  PosixFileOverwrite(std::string path, FileDescriptor file)
      : path_(std::move(path)), file_(std::move(file)) {}

  Result<void> reserve(std::uint64_t size) override {
    int error = 0;
    do {
      error = fallocate(file_.number(), FALLOC_FL_KEEP_SIZE, 0, static_cast<off_t>(size)) < 0
                  ? errno
                  : 0;
    } while (error == EINTR);
    const bool lacksRoom = error == ENOSPC || error == EDQUOT || error == EFBIG;
    return lacksRoom ? failure(error) : Result<void>();
  }

  Result<void> write(std::uint64_t offset, std::string_view bytes) override {
    const int error = writeFully(file_.number(), offset, bytes);
    return error == 0 ? Result<void>() : failure(error);
  }

  Result<void> setLength(std::uint64_t size) override {
    while (ftruncate(file_.number(), static_cast<off_t>(size)) < 0) {
      if (errno != EINTR) return failure(errno);
    }
    return {};
  }

  Result<void> finish() override {
    const int error = file_.finish();
    return error == 0 ? Result<void>() : failure(error);
  }

 private:
  Result<void> failure(int error) const { return systemFileError(path_, "written", error); }

  std::string path_;
  FileDescriptor file_;
};

/// Flushes the folder of the path, so that a new entry reaches the disk. The entry is already
/// visible to all programs, and some file systems cannot flush folders, so a failure is ignored.
void flushFolderOf(const std::string& path) {
  const std::filesystem::path parent = std::filesystem::path(path).parent_path();
  const FileDescriptor folder(
      open(parent.empty() ? "." : parent.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder) return;
  while (fsync(folder.number()) < 0 && errno == EINTR) {
  }
}

/// A file that is deleted unless it is renamed to its final name. The temporary name depends only
/// on the path, so a killed program leaves at most one such file, until the next write.
class TemporaryFile {
 public:
  /// Creates the file beside `path`. Without a descriptor, errno says why it could not be created.
  TemporaryFile(const std::string& path, mode_t permissions) : path_(path + ".tmp") {
    unlink(path_.c_str());
    file_ =
        FileDescriptor(open(path_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, permissions));
  }
  ~TemporaryFile() {
    if (file_) unlink(path_.c_str());
  }
  TemporaryFile(const TemporaryFile&) = delete;
  TemporaryFile& operator=(const TemporaryFile&) = delete;

  explicit operator bool() const { return static_cast<bool>(file_); }

  /// Writes the bytes, then renames the file to `path`. Returns 0 or the error number.
  int become(const std::string& path, std::string_view bytes,
             std::optional<std::uint32_t> permissions) {
    if (permissions && fchmod(file_.number(), *permissions & permissionBits) < 0) return errno;
    if (const int error = writeFully(file_.number(), 0, bytes)) return error;
    while (fdatasync(file_.number()) < 0) {
      if (errno != EINTR) return errno;
    }
    if (rename(path_.c_str(), path.c_str()) < 0) return errno;
    file_.close();
    flushFolderOf(path);
    return 0;
  }

 private:
  std::string path_;
  FileDescriptor file_;
};

}  // namespace

bool PosixFileSystem::exists(const std::string& path) const {
  if (statusOf(path)) return true;
  return errno != ENOENT && errno != ENOTDIR && errno != ENAMETOOLONG && errno != ELOOP;
}

bool PosixFileSystem::isExecutableFile(const std::string& path) const {
  const auto status = statusOf(path);
  return status && S_ISREG(status->st_mode) && access(systemPath(path), X_OK) == 0;
}

Result<void> PosixFileSystem::createDirectories(const std::string& path) {
  std::error_code error;
  std::filesystem::create_directories(systemPath(path), error);
  if (!error) return {};
  return folderError(path, "created", systemErrorText(error.value()),
                     systemErrorKind(error.value()));
}

Result<void> PosixFileSystem::createPrivateDirectory(const std::string& path) {
  const std::filesystem::path parent = std::filesystem::path(path).parent_path();
  if (!parent.empty()) {
    if (Result<void> created = createDirectories(parent.string()); !created) return created;
  }
  struct stat status {};
  const bool isCreated = mkdir(systemPath(path), privateFolderPermissions) == 0;
  if ((!isCreated && errno != EEXIST) || lstat(systemPath(path), &status) < 0) {
    return folderError(path, "created", systemErrorText(errno), systemErrorKind(errno));
  }
  const std::string obstacle = obstacleInPrivacy(status);
  return obstacle.empty() ? Result<void>() : folderError(path, "used", obstacle);
}

Result<std::string> PosixFileSystem::read(const std::string& path) const {
  const Result<FileDescriptor> opened = openRegularFile(path, O_RDONLY, "read");
  if (!opened) return opened.error();
  const int file = opened.value().number();
  struct stat status {};
  fstat(file, &status);
  const auto expected = static_cast<std::size_t>(
      std::min(static_cast<std::uint64_t>(status.st_size), maximumFileSize + 1));

  std::string bytes;
  bytes.reserve(expected + spareCapacity);
  bytes.resize(expected);
  ssize_t count = readFully(file, bytes.data(), expected);
  bytes.resize(static_cast<std::size_t>(std::max<ssize_t>(count, 0)));
  // The size is a hint: files in /proc have size 0, and other files may grow meanwhile.
  std::array<char, 4096> rest;
  while (count >= 0 && bytes.size() <= maximumFileSize) {
    count = readFully(file, rest.data(), rest.size());
    if (count <= 0) break;
    bytes.append(rest.data(), static_cast<std::size_t>(count));
  }
  if (count < 0) return systemFileError(path, "read", errno);
  if (bytes.size() > maximumFileSize) return fileTooLarge(path);
  if (bytes.capacity() - bytes.size() < spareCapacity) bytes.reserve(bytes.size() + spareCapacity);
  return bytes;
}

Result<std::uint32_t> PosixFileSystem::permissions(const std::string& path) const {
  const auto status = statusOf(path);
  if (!status) return systemFileError(path, "examined", errno);
  return static_cast<std::uint32_t>(status->st_mode & permissionBits);
}

Result<void> PosixFileSystem::replace(const std::string& path, std::string_view bytes,
                                      std::optional<std::uint32_t> permissions) {
  const auto status = statusOf(path);
  if (status && S_ISDIR(status->st_mode)) {
    return systemFileError(path, "written", EISDIR);
  }
  if (!status && errno != ENOENT) return systemFileError(path, "written", errno);
  const std::string target = followLinks(systemPath(path));
  if (target.empty()) return systemFileError(path, "written", ENOENT);
  // Other users must not read the file before it has its final permissions.
  TemporaryFile temporary(target, permissions ? privateFilePermissions : newFilePermissions);
  if (!temporary) return systemFileError(path, "written", errno);
  if (const int error = temporary.become(target, bytes, permissions)) {
    return systemFileError(path, "written", error);
  }
  return {};
}

Result<std::unique_ptr<FileOverwrite>> PosixFileSystem::openForOverwriting(
    const std::string& path) {
  Result<FileDescriptor> opened = openRegularFile(path, O_WRONLY | O_CREAT, "written");
  if (!opened) return opened.error();
  return std::unique_ptr<FileOverwrite>(
      std::make_unique<PosixFileOverwrite>(path, std::move(opened).value()));
}

}  // namespace quillmar
