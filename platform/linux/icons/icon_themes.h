// Looks up icons in the user's icon themes. The themes' folders are listed on the first query.
// Later queries for names that no theme contains need no disk access. Main thread.

#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/environment.h"

namespace quillmar {

class IconThemes {
 public:
  /// Searches the themes, and those that they inherit from, in the folders. Missing ones are
  /// ignored.
  IconThemes(std::vector<std::string> directories, std::vector<std::string> themes);

  /// Uses the folders and the theme of the environment and the user's toolkit settings, then the
  /// themes that every desktop falls back to.
  static IconThemes ofUser(const Environment& environment, const std::string& homeDirectory);

  bool contains(const std::string& iconName);

  /// Whether one of the folders has a file of this path, such as "hicolor/scalable/apps/NAME.svg".
  bool hasFile(const std::string& path) const;

 private:
  struct Listing {
    /// Folders with the themes' files.
    std::vector<std::string> leaves;
    /// Sorted hashes of the names of all icons in them: tens of thousands of names would take
    /// megabytes.
    std::vector<std::size_t> nameHashes;
  };

  std::vector<std::string> findLeaves() const;
  Listing list() const;

  std::vector<std::string> directories_;
  std::vector<std::string> themes_;
  /// Absent until the first query.
  std::optional<Listing> listing_;
};

}  // namespace quillmar
