#include "platform/linux/login/autostart_login_item.h"

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include <unistd.h>

#include "platform/error_text.h"
#include "platform/linux/files/system_error.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr const char* fileName = "/com.tovenworks.quillmar.desktop";
constexpr const char* systemFolders = "/etc/xdg";
constexpr const char* linkToThisProgram = "/proc/self/exe";

std::string nameOf(const std::string& path) {
  return path.substr(path.rfind('/') + 1);
}

Result<void> removeFile(const std::string& path) {
  if (unlink(path.c_str()) == 0) return {};
  return fileError(path, "deleted", systemErrorText(errno), systemErrorKind(errno));
}

Error switchedOffError(const std::string& path, const std::string& reason) {
  return {"Quillmar is switched off in the file " + quotedPath(path) + ": " + reason +
          ". Switch it on in the settings of your desktop, or delete the file."};
}

}  // namespace

AutostartLoginItem::AutostartLoginItem(std::string program, const Environment& environment,
                                       const UserDirectories& directories, PosixFileSystem& files)
    : program_(std::move(program)),
      environment_(environment),
      files_(files),
      folder_(directories.applicationSupportDirectories().front() + "/autostart"),
      path_(folder_ + fileName) {
  std::string folders = environment.value("XDG_CONFIG_DIRS").value_or("");
  if (folders.empty()) folders = systemFolders;
  for (const std::string& folder : text::split(folders, ':')) {
    systemPaths_.push_back(folder + "/autostart" + fileName);
  }
}

std::string AutostartLoginItem::pathOfThisProgram() {
  std::error_code unknown;
  return std::filesystem::read_symlink(linkToThisProgram, unknown).string();
}

LoginItemStatus AutostartLoginItem::status() const {
  const auto file = effectiveFile();
  return file ? statusOf(file->entry) : LoginItemStatus::notRegistered;
}

Result<void> AutostartLoginItem::registerItem() {
  const auto file = effectiveFile();
  if (file) {
    const LoginItemStatus status = statusOf(file->entry);
    if (status == LoginItemStatus::enabled) return {};
    if (file->path == path_ && status != LoginItemStatus::notRegistered) {
      if (!file->entry.switchedOffBy.empty()) {
        return switchedOffError(path_, file->entry.switchedOffBy);
      }
      if (!file->entry.isOurs) {
        return Error{"The file " + quotedPath(path_) +
                     " does not start this program, and Quillmar did not write it. Correct or "
                     "delete the file."};
      }
    }
  }
  if (program_.empty()) {
    return Error{"The path of this program could not be read from " +
                 quotedPath(linkToThisProgram) + "."};
  }
  return writeFile(makeAutostartEntry(program_));
}

Result<void> AutostartLoginItem::unregisterItem() {
  const auto file = effectiveFile();
  if (!file) return {};
  const LoginItemStatus status = statusOf(file->entry);
  if (status == LoginItemStatus::requiresApproval || status == LoginItemStatus::notRegistered) {
    return {};
  }
  const bool isOfUser = file->path == path_;
  if (isOfUser && !file->entry.isOurs) {
    if (status != LoginItemStatus::enabled) return {};
    return Error{"The file " + quotedPath(path_) +
                 " starts Quillmar at login, and Quillmar did not write it. Switch it off in the "
                 "settings of your desktop, or delete the file."};
  }
  const auto ofSystem = systemFile();
  if (ofSystem && statusOf(ofSystem->entry) == LoginItemStatus::enabled) {
    return writeFile(makeHiddenAutostartEntry(program_));
  }
  if (isOfUser) return removeFile(path_);
  return {};
}

std::optional<AutostartLoginItem::File> AutostartLoginItem::readFile(
    const std::string& path) const {
  if (!files_.exists(path)) return std::nullopt;
  const Result<std::string> text = files_.read(path);
  return File{path,
              text ? parseAutostartEntry(text.value(), environment_, files_) : AutostartEntry()};
}

std::optional<AutostartLoginItem::File> AutostartLoginItem::systemFile() const {
  for (const std::string& path : systemPaths_) {
    if (auto file = readFile(path)) return file;
  }
  return std::nullopt;
}

std::optional<AutostartLoginItem::File> AutostartLoginItem::effectiveFile() const {
  if (auto file = readFile(path_)) return file;
  return systemFile();
}

Result<void> AutostartLoginItem::writeFile(const std::string& text) {
  if (Result<void> created = files_.createDirectories(folder_); !created) return created;
  return files_.replace(path_, text, std::nullopt);
}

LoginItemStatus AutostartLoginItem::statusOf(const AutostartEntry& entry) const {
  if (entry.isUnregistered) return LoginItemStatus::notRegistered;
  if (!entry.switchedOffBy.empty()) return LoginItemStatus::requiresApproval;
  if (!entry.isProgramInstalled) return LoginItemStatus::notFound;
  return startsThisProgram(entry) ? LoginItemStatus::enabled : LoginItemStatus::requiresApproval;
}

/// True for another installation of this program, too.
bool AutostartLoginItem::startsThisProgram(const AutostartEntry& entry) const {
  return nameOf(entry.program) == nameOf(program_);
}

}  // namespace quillmar
