#include "platform/linux/icons/icon_theme_images.h"

#include <filesystem>
#include <string_view>
#include <system_error>
#include <utility>

#include "platform/linux/icons/symbol_names.h"

namespace quillmar {

namespace {

constexpr const char* applicationPrefix = "com.tovenworks.quillmar-";
/// The application's own icon, which desktops know by the application's name.
constexpr const char* applicationIcon = "applicationIcon";
constexpr const char* applicationIconFile = "com.tovenworks.quillmar";
constexpr std::string_view symbolPrefix = "quillmar-";
/// Panels draw icons with such names in the colour of their text.
constexpr std::string_view symbolicSuffix = "-symbolic";
/// The folder of the symbols in the theme.
constexpr const char* symbolFolder = "scalable/actions";

}  // namespace

IconThemeImages::IconThemeImages(std::string iconThemePath, IconThemes userThemes)
    : themeDirectory_(std::move(iconThemePath) + "/hicolor/"), userThemes_(std::move(userThemes)) {}

std::optional<Image> IconThemeImages::named(const std::string& name) {
  Answer icon = findNamed(name);
  if (!icon) return std::nullopt;
  return Image{.name = *std::move(icon), .isTemplate = false, .pointSize = {}, .weight = {}};
}

std::optional<Image> IconThemeImages::symbol(const std::string& name) {
  auto known = symbols_.find(name);
  if (known == symbols_.end()) known = symbols_.emplace(name, findSymbol(name)).first;
  if (!known->second) return std::nullopt;
  // A user's theme may have a coloured icon of that name.
  const bool isTemplate = known->second->ends_with(symbolicSuffix);
  return Image{.name = *known->second, .isTemplate = isTemplate, .pointSize = {}, .weight = {}};
}

std::vector<std::string> IconThemeImages::symbolNames() const {
  std::vector<std::string> icons;
  std::error_code ignored;
  for (const auto& entry :
       std::filesystem::directory_iterator(themeDirectory_ + symbolFolder, ignored)) {
    std::string icon = entry.path().stem().string();
    if (!icon.starts_with(symbolPrefix) || !icon.ends_with(symbolicSuffix)) continue;
    icon.erase(icon.size() - symbolicSuffix.size());
    icon.erase(0, symbolPrefix.size());
    icons.push_back(std::move(icon));
  }
  return symbolNamesForIcons(std::move(icons));
}

bool IconThemeImages::areRegistered() const {
  return userThemes_.hasFile(std::string("hicolor/scalable/apps/") + applicationIconFile + ".svg");
}

IconThemeImages::Answer IconThemeImages::findNamed(const std::string& name) const {
  const std::string symbolic = (applicationPrefix + name).append(symbolicSuffix);
  if (ships("symbolic/apps/" + symbolic)) return symbolic;
  const std::string icon = name == applicationIcon ? applicationIconFile : name;
  if (ships("scalable/apps/" + icon)) return icon;
  return std::nullopt;
}

IconThemeImages::Answer IconThemeImages::findSymbol(const std::string& name) {
  for (const std::string& candidate : iconNamesForSymbol(name)) {
    std::string icon = std::string(symbolPrefix).append(candidate).append(symbolicSuffix);
    if (ships(std::string(symbolFolder).append("/").append(icon))) return icon;
  }
  if (userThemes_.contains(name)) return name;
  return std::nullopt;
}

bool IconThemeImages::ships(const std::string& pathInTheme) const {
  std::error_code ignored;
  return std::filesystem::is_regular_file(themeDirectory_ + pathInTheme + ".svg", ignored);
}

}  // namespace quillmar
