#include "config/settings_location.h"

#include <cstdio>
#include <cstdlib>

namespace quillmar {

namespace {

std::string appendingPathComponent(std::string directory, std::string_view component) {
  if (!directory.ends_with('/')) directory += '/';
  return directory.append(component);
}

}  // namespace

std::string settingsFilePath(const Environment& environment, const UserDirectories& userDirectories,
                             FileSystem& files) {
  std::string directory = environment.value(std::string(settingsDirectoryVariable)).value_or("");
  if (directory.empty()) {
    const auto supportDirectories = userDirectories.applicationSupportDirectories();
    if (supportDirectories.empty()) {
      std::fputs("Fatal error: there is no folder for application data.\n", stderr);
      std::abort();
    }
    directory = appendingPathComponent(supportDirectories.front(), "Quillmar");
  }
  // If the folder cannot be created, reading or writing the file reports the error.
  (void)files.createDirectories(directory);
  return appendingPathComponent(std::move(directory), "settings.json");
}

}  // namespace quillmar
