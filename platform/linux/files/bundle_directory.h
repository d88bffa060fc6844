// The application's files under a "share" folder: beside the program in the build tree, and where
// it is installed. Any thread, but for the information dictionary.

#pragma once

#include <optional>
#include <string>

#include "platform/bundle.h"

namespace quillmar {

class BundleDirectory final : public Bundle {
 public:
  /// `shareDirectory` holds quillmar/ (the resources) and icons/ (icon themes).
  explicit BundleDirectory(std::string shareDirectory);

  /// The bundle of this program: ../share beside the folder that it was started from.
  static BundleDirectory ofThisProgram();

  std::optional<std::string> pathForResource(const std::string& name, const std::string& extension,
                                             const std::string& subfolder) const override;

  /// The folder with icon themes, for panels and for IconThemeImages.
  std::string iconThemePath() const { return shareDirectory_ + "/icons"; }

  /// The folder with icons as pixels, for StatusNotifierItem.
  std::string pixmapDirectory() const { return shareDirectory_ + "/quillmar/pixmaps"; }

 private:
  /// Read when it is first asked for.
  const BundleInformation& informationDictionary() const override;

  std::string shareDirectory_;
  mutable std::optional<BundleInformation> information_;
};

}  // namespace quillmar
