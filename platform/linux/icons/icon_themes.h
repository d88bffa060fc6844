// Which icons the user's own icon themes have. Read lazily: the themes' folders are listed with the
// first question; a name that stands in none of them, however many such names there are, costs no
// further look at the disk. Main thread.

#pragma once

#include <cstddef>
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

  /// Whether one of the folders has a file of this path, such as "hicolor/scalable/apps/NAME.svg".
  bool hasFile(const std::string& path) const;

 private:
  struct Listing {
    /// The folders that hold the themes' files.
    std::vector<std::string> leaves;
    /// Hashes of the names of all icons in them, sorted: tens of thousands of names would weigh
    /// megabytes.
    std::vector<std::size_t> nameHashes;
  };

  std::vector<std::string> findLeaves() const;
  Listing list() const;

  std::vector<std::string> directories_;
  std::vector<std::string> themes_;
  /// Absent until the first question.
  std::optional<Listing> listing_;
};

}  // namespace quillmar
