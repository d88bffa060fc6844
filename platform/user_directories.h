// Locations of the user's files.

#pragma once

#include <string>
#include <vector>

namespace quillmar {

class UserDirectories {
 public:
  virtual ~UserDirectories() = default;

  virtual std::string homeDirectory() const = 0;

  /// Folders for application data, the preferred one first.
  virtual std::vector<std::string> applicationSupportDirectories() const = 0;
};

}  // namespace quillmar
