#include "config/settings_file.h"

#include <ctime>
#include <optional>
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

Result<void> writeWhole(FileOverwrite& file, std::string_view bytes) {
  if (Result<void> written = file.write(0, bytes); !written) return written;
  return file.setLength(bytes.size());
}

}  // namespace

SettingsFile::SettingsFile(FileSystem& files, Clock now) : files_(files), now_(std::move(now)) {}

Result<void> SettingsFile::overwrite(const std::string& path, std::string_view bytes) {
  const bool existed = files_.exists(path);
  std::optional<std::string> oldBytes;
  if (existed) {
    if (Result<std::string> read = files_.read(path)) oldBytes = std::move(read).value();
  }
  if (oldBytes) keepCopy(path, *oldBytes);

  auto opened = files_.openForOverwriting(path);
  if (!opened) return opened.error();
  const std::unique_ptr<FileOverwrite> file = std::move(opened).value();

  Result<void> outcome = file->reserve(bytes.size());
  if (outcome) {
    outcome = writeWhole(*file, bytes);
    if (!outcome && oldBytes && !writeWhole(*file, *oldBytes)) {
      return Error{outcome.error().description +
                   " The old settings could not be put back; they are kept in “" +
                   siblingPath(path, ".previous") + "”."};
    }
  }
  // A file that this write made must not stay behind empty or cut: it would count as settings.
  if (!outcome && !existed) (void)files_.remove(path);
  return outcome;
}

void SettingsFile::keepCopy(const std::string& path, const std::string& bytes) {
  const bool isDocument = decodeDocument(bytes).ok();
  const std::string copyPath = isDocument ? siblingPath(path, ".previous") : freeDamagedPath(path);

  const Result<std::uint32_t> permissions = files_.permissions(path);
  // The settings are saved even when no copy can be kept.
  (void)files_.replace(copyPath, bytes, permissions ? permissions.value() : privatePermissions);
}

std::string SettingsFile::freeDamagedPath(const std::string& path) const {
  const std::string base = ".damaged-" + timeStamp(now_());
  std::string candidate = siblingPath(path, base);
  for (int number = 2; files_.exists(candidate); ++number) {
    candidate = siblingPath(path, base + "-" + std::to_string(number));
  }
  return candidate;
}

}  // namespace quillmar
