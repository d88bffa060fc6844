// Where the user's own files lie.

#pragma once

#include <string>
#include <vector>

namespace quillmar {

class UserDirectories {
 public:
  virtual ~UserDirectories() = default;

  virtual std::string homeDirectory() const = 0;

  /// The folders for programs' own files, the preferred one first.
  virtual std::vector<std::string> applicationSupportDirectories() const = 0;
};

}  // namespace quillmar
