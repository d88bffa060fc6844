// The application's files under a "share" folder: beside the program in the build tree, or in the
// installation. Any thread, except for the information dictionary.

#pragma once

#include <optional>
#include <string>

#include "platform/bundle.h"

namespace quillmar {

class BundleDirectory final : public Bundle {
 public:
  /// `shareDirectory` holds quillmar/ (the resources) and icons/ (icon themes).
  explicit BundleDirectory(std::string shareDirectory);

  /// The bundle of this program: the folder ../share, relative to the folder of the executable.
  static BundleDirectory ofThisProgram();

  std::optional<std::string> pathForResource(const std::string& name, const std::string& extension,
                                             const std::string& subfolder) const override;

  /// Folder with icon themes, for panels and for IconThemeImages.
  std::string iconThemePath() const { return shareDirectory_ + "/icons"; }

  /// Folder with icons as pixels, for StatusNotifierItem.
  std::string pixmapDirectory() const { return shareDirectory_ + "/quillmar/pixmaps"; }

 private:
  /// Read on first use.
  const BundleInformation& informationDictionary() const override;

  std::string shareDirectory_;
  mutable std::optional<BundleInformation> information_;
};

}  // namespace quillmar
