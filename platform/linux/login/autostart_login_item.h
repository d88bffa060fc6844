// The login item as a file in the user's autostart folder, which desktops and systemd read at
// login. It takes precedence over files of the same name in the folders of the system.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/environment.h"
#include "platform/linux/files/posix_file_system.h"
#include "platform/linux/login/autostart_entry.h"
#include "platform/login_item.h"
#include "platform/user_directories.h"

namespace quillmar {

class AutostartLoginItem final : public LoginItem {
 public:
  /// `program` is the absolute path of this program, or empty if it is unknown. The other arguments
  /// must outlive this object.
  AutostartLoginItem(std::string program, const Environment& environment,
                     const UserDirectories& directories, PosixFileSystem& files);

  /// The path of this program's executable file, read at the start: later the file may have been
  /// replaced. Empty if the system does not tell it.
  static std::string pathOfThisProgram();

  LoginItemStatus status() const override;
  Result<void> registerItem() override;
  Result<void> unregisterItem() override;

 private:
  /// A file that cannot be read counts as one without a program.
  struct File {
    std::string path;
    AutostartEntry entry;
  };

  std::optional<File> readFile(const std::string& path) const;
  std::optional<File> systemFile() const;
  /// The file that desktops use: that of the user, or else that of the system.
  std::optional<File> effectiveFile() const;
  Result<void> writeFile(const std::string& text);
  LoginItemStatus statusOf(const AutostartEntry& entry) const;
  bool startsThisProgram(const AutostartEntry& entry) const;

  std::string program_;
  const Environment& environment_;
  PosixFileSystem& files_;
  std::string folder_;
  /// Of the user's file.
  std::string path_;
  std::vector<std::string> systemPaths_;
};

}  // namespace quillmar
