// Which icons the user's own icon themes have. Read lazily: the themes' folders with the first
// question, a name's files with each. Main thread.

#pragma once

#include <optional>
#include <string>
#include <vector>

#include "platform/environment.h"

namespace quillmar {

class IconThemes {
 public:
  /// Looks for the themes, and for those that they inherit from, in the folders. Missing ones are
  /// passed over.
  IconThemes(std::vector<std::string> directories, std::vector<std::string> themes);

  /// The folders and the theme that the environment and the user's toolkit settings name, then the
  /// themes that every desktop falls back to.
  static IconThemes ofUser(const Environment& environment, const std::string& homeDirectory);

  bool contains(const std::string& iconName);

 private:
  std::vector<std::string> findLeaves() const;

  std::vector<std::string> directories_;
  std::vector<std::string> themes_;
  /// The folders that hold the themes' files; absent until the first question.
  std::optional<std::vector<std::string>> leaves_;
};

}  // namespace quillmar
