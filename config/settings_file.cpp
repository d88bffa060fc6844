#include "config/settings_file.h"

#include <cstdint>
#include <ctime>
#include <memory>
#include <utility>

#include "config/document_decoder.h"

namespace quillmar {

namespace {

/// Permissions of a copy whose original does not tell its own.
constexpr std::uint32_t privatePermissions = 0600;

/// "settings" and `suffix` in place of the path's "settings.json".
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

/// Writes the bytes over whatever the open file holds.
Result<void> writeWhole(FileOverwrite& file, std::string_view bytes) {
  if (Result<void> written = file.write(0, bytes); !written) return written;
  if (Result<void> cut = file.setLength(bytes.size()); !cut) return cut;
  return file.finish();
}

Result<void> reopenAndWriteWhole(FileSystem& files, const std::string& path,
                                 std::string_view bytes) {
  const auto opened = files.openForOverwriting(path);
  if (!opened) return opened.error();
  return writeWhole(*opened.value(), bytes);
}

}  // namespace

SettingsFile::SettingsFile(FileSystem& files, Clock now) : files_(files), now_(std::move(now)) {}

Result<void> SettingsFile::overwrite(const std::string& path, std::string_view bytes) {
  if (!files_.exists(path)) return files_.replace(path, bytes, std::nullopt);

  std::optional<std::string> oldBytes;
  std::optional<std::string> copyPath;
  if (Result<std::string> read = files_.read(path)) {
    oldBytes = std::move(read).value();
    copyPath = keepCopy(path, *oldBytes);
  }
  return writeInPlace(path, bytes, oldBytes, copyPath);
}

Result<void> SettingsFile::writeInPlace(const std::string& path, std::string_view bytes,
                                        const std::optional<std::string>& oldBytes,
                                        const std::optional<std::string>& copyPath) {
  const auto opened = files_.openForOverwriting(path);
  if (!opened) return opened.error();
  if (Result<void> reserved = opened.value()->reserve(bytes.size()); !reserved) return reserved;

  Result<void> written = writeWhole(*opened.value(), bytes);
  if (written || !oldBytes) return written;
  if (reopenAndWriteWhole(files_, path, *oldBytes)) return written;
  return Error{written.error().description + " The old settings could not be put back; " +
               (copyPath ? "they are kept in “" + *copyPath + "”."
                         : "no copy of them could be kept either.")};
}

/// Keeps the bytes that are about to be overwritten; the path of the copy, absent when it could not
/// be made.
std::optional<std::string> SettingsFile::keepCopy(const std::string& path,
                                                  const std::string& bytes) {
  const auto keep = [&](const std::string& original, const std::string& copyPath,
                        std::string_view copied) -> std::optional<std::string> {
    const Result<std::uint32_t> permissions = files_.permissions(original);
    const Result<void> kept =
        files_.replace(copyPath, copied, permissions ? permissions.value() : privatePermissions);
    return kept ? std::optional(copyPath) : std::nullopt;
  };

  const std::string previousPath = siblingPath(path, ".previous");
  if (decodeDocument(bytes)) return keep(path, previousPath, bytes);

  const std::string time = timeStamp(now_());
  if (const Result<std::string> previous = files_.read(previousPath)) {
    keep(previousPath, freePath(path, ".previous-" + time), previous.value());
  }
  return keep(path, freePath(path, ".damaged-" + time), bytes);
}

/// The sibling with the suffix, or, when there is one already, with a number behind it.
std::string SettingsFile::freePath(const std::string& path, const std::string& suffix) const {
  std::string candidate = siblingPath(path, suffix);
  for (int number = 2; files_.exists(candidate); ++number) {
    candidate = siblingPath(path, suffix + "-" + std::to_string(number));
  }
  return candidate;
}

}  // namespace quillmar
