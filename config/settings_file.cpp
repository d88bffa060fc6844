#include "config/settings_file.h"

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <functional>
#include <memory>
#include <utility>

#include "config/document_file.h"
#include "platform/error_text.h"

namespace quillmar {

namespace {

/// Permissions of a copy if those of the original cannot be read.
constexpr std::uint32_t privatePermissions = 0600;

/// Replaces the first byte of a partly written file. No document begins with it, so such a file
/// never decodes, not even as a mixture of two documents.
constexpr std::string_view unfinishedMark = "!";

/// Inserts `suffix` before the extension ".json" of the path.
std::string siblingPath(const std::string& path, const std::string& suffix) {
  constexpr std::string_view extension = ".json";
  std::string stem = path;
  if (stem.ends_with(extension)) stem.resize(stem.size() - extension.size());
  return stem + suffix + std::string(extension);
}

std::string timeStamp(std::chrono::system_clock::time_point time) {
  const std::time_t seconds = std::chrono::system_clock::to_time_t(time);
  std::tm parts{};
  gmtime_r(&seconds, &parts);
  char text[32];
  std::strftime(text, sizeof text, "%Y%m%dT%H%M%SZ", &parts);
  return text;
}

/// Writes the bytes over those of the open file, which begins with the mark: the first byte is
/// written last.
Result<void> writeMarked(FileOverwrite& file, std::string_view bytes) {
  const std::size_t first = std::min<std::size_t>(bytes.size(), 1);
  if (Result<void> written = file.write(first, bytes.substr(first)); !written) return written;
  if (Result<void> cut = file.setLength(bytes.size()); !cut) return cut;
  if (Result<void> written = file.write(0, bytes.substr(0, first)); !written) return written;
  return file.finish();
}

Result<void> putBack(FileSystem& files, const std::string& path, std::string_view bytes) {
  const auto opened = files.openForOverwriting(path);
  if (!opened) return opened.error();
  return writeMarked(*opened.value(), bytes);
}

/// Whether a failure to create the copy must stop the save, because the save may fail as well. A
/// missing permission to create files does not.
bool stopsSave(const Error& error) {
  return error.kind == ErrorKind::noSpace || error.kind == ErrorKind::deviceFailure;
}

}  // namespace

SettingsFile::SettingsFile(FileSystem& files, LogLine log, Clock now)
    : files_(files), log_(std::move(log)), now_(std::move(now)) {}

SettingsFile::Contents SettingsFile::contentsOf(std::string_view bytes) {
  return {.size = bytes.size(), .hash = std::hash<std::string_view>()(bytes)};
}

Result<QuillmarConfig> SettingsFile::load(const std::string& path,
                                          const std::function<std::string()>& makeIdentifier) {
  known_.reset();
  const Result<std::string> bytes = files_.read(path);
  if (!bytes) return bytes.error();
  Result<QuillmarConfig> decoded = decodeFile(path, bytes.value(), makeIdentifier);
  known_ = contentsOf(bytes.value());
  isDamaged_ = !decoded.ok();
  return decoded;
}

Result<void> SettingsFile::overwrite(const std::string& path, std::string_view bytes) {
  if (bytes.size() > maximumFileSize) {
    return fileError(path, "written", "It would be larger than 64 MiB", ErrorKind::tooLarge);
  }
  Result<void> written = files_.exists(path) ? overwriteExisting(path, bytes)
                                             : files_.replace(path, bytes, std::nullopt);
  if (written) {
    known_ = contentsOf(bytes);
    isDamaged_ = false;
    kept_.reset();
  }
  return written;
}

Result<void> SettingsFile::overwriteExisting(const std::string& path, std::string_view bytes) {
  const Result<std::string> oldBytes = files_.read(path);
  if (!oldBytes) {
    // The file is writable but not readable, so no copy is possible.
    if (oldBytes.error().kind != ErrorKind::notPermitted) return oldBytes.error();
    return writeInPlace(path, bytes, std::nullopt, std::nullopt);
  }
  const Result<std::string> copy = keepCopy(path, oldBytes.value());
  if (!copy && stopsSave(copy.error())) return copy.error();
  return writeInPlace(path, bytes, oldBytes.value(),
                      copy ? std::optional(copy.value()) : std::nullopt);
}

Result<void> SettingsFile::writeInPlace(const std::string& path, std::string_view bytes,
                                        std::optional<std::string_view> oldBytes,
                                        const std::optional<std::string>& copyPath) {
  const auto opened = files_.openForOverwriting(path);
  if (!opened) return opened.error();
  FileOverwrite& file = *opened.value();
  if (Result<void> reserved = file.reserve(bytes.size()); !reserved) return reserved;
  if (Result<void> marked = file.write(0, unfinishedMark); !marked) return marked;

  Result<void> written = writeMarked(file, bytes);
  if (written || !oldBytes) return written;
  if (putBack(files_, path, *oldBytes)) return written;
  return Error{written.error().description + " The old settings could not be restored; " +
                   (copyPath ? "they are kept in " + quotedPath(*copyPath) + "."
                             : "no copy of them could be kept either."),
               written.error().kind};
}

Result<std::string> SettingsFile::keepCopy(const std::string& path, const std::string& bytes) {
  const Contents contents = contentsOf(bytes);
  if (kept_ && kept_->first == contents && files_.exists(kept_->second)) return kept_->second;

  const bool isUnfinished = bytes.starts_with(unfinishedMark);
  const bool isKnown = known_ == contents;
  if (isKnown && !isDamaged_) return copyTo(siblingPath(path, ".previous"), path, bytes);
  Result<std::string> copy =
      isKnown || isUnfinished ? keepDamaged(path, bytes) : keepEdited(path, bytes);
  if (copy) kept_.emplace(contents, copy.value());
  return copy;
}

/// Copies the contents that are not a document, and the previous document, which may then be the
/// only valid one.
Result<std::string> SettingsFile::keepDamaged(const std::string& path, const std::string& bytes) {
  const std::string previousPath = siblingPath(path, ".previous");
  const std::string time = timeStamp(now_());
  if (const Result<std::string> previous = files_.read(previousPath)) {
    const Result<std::string> kept =
        copyTo(freePath(path, ".previous-" + time), previousPath, previous.value());
    if (!kept && stopsSave(kept.error())) return kept.error();
  }
  return copyTo(freePath(path, ".damaged-" + time), path, bytes);
}

/// Copies the contents that another program wrote, and logs the path of the copy.
Result<std::string> SettingsFile::keepEdited(const std::string& path, const std::string& bytes) {
  Result<std::string> kept = copyTo(freePath(path, ".edited-" + timeStamp(now_())), path, bytes);
  log_("The settings file " + quotedPath(path) + " was changed while Quillmar was running. " +
       (kept ? "The changed version is kept in " + quotedPath(kept.value()) + "."
             : "The changed version could not be kept: " + kept.error().description));
  return kept;
}

/// Writes the bytes to the path of the copy, with the permissions of the original; returns that
/// path.
Result<std::string> SettingsFile::copyTo(const std::string& copyPath, const std::string& original,
                                         std::string_view bytes) {
  const Result<std::uint32_t> permissions = files_.permissions(original);
  const Result<void> kept =
      files_.replace(copyPath, bytes, permissions ? permissions.value() : privatePermissions);
  if (!kept) return kept.error();
  return copyPath;
}

/// The sibling path with the suffix, followed by a number if that file exists.
std::string SettingsFile::freePath(const std::string& path, const std::string& suffix) const {
  std::string candidate = siblingPath(path, suffix);
  for (int number = 2; files_.exists(candidate); ++number) {
    candidate = siblingPath(path, suffix + "-" + std::to_string(number));
  }
  return candidate;
}

}  // namespace quillmar
