// Images by the names that panels and toolkits look up in icon themes. Main thread.

#pragma once

#include <optional>
#include <string>
#include <unordered_map>
#include <vector>

#include "platform/image.h"
#include "platform/linux/icons/icon_themes.h"

namespace quillmar {

class IconThemeImages final : public Images {
 public:
  /// `iconThemePath` holds the icons that ship with the application, under the theme "hicolor".
  IconThemeImages(std::string iconThemePath, IconThemes userThemes);

  std::optional<Image> named(const std::string& name) override;

  /// True when the desktop finds the icons that ship with the application by their names.
  bool areRegistered() const;

  /// A symbol that ships with the application, otherwise an icon of the user's themes with exactly
  /// that name.
  std::optional<Image> symbol(const std::string& name) override;

  /// The names of the symbols that ship with the application.
  std::vector<std::string> symbolNames() const override;

 private:
  /// An icon name, absent when there is no such icon.
  using Answer = std::optional<std::string>;

  Answer findNamed(const std::string& name) const;
  Answer findSymbol(const std::string& name);
  bool ships(const std::string& pathInTheme) const;

  std::string themeDirectory_;
  IconThemes userThemes_;
  std::unordered_map<std::string, Answer> symbols_;
};

}  // namespace quillmar
