#include "platform/linux/icons/icon_themes.h"

#include <algorithm>
#include <filesystem>
#include <functional>
#include <system_error>
#include <utility>

#include "platform/linux/bus/glib_pointers.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr const char* themeGroup = "Icon Theme";

/// Null when the file cannot be read.
GKeyFilePtr loadKeyFile(const std::string& path) {
  GKeyFilePtr file(g_key_file_new());
  if (!g_key_file_load_from_file(file.get(), path.c_str(), G_KEY_FILE_NONE, nullptr)) file.reset();
  return file;
}

std::string stringValue(GKeyFile* file, const char* group, const char* key) {
  const GStringPtr value(g_key_file_get_string(file, group, key, nullptr));
  return value ? value.get() : "";
}

bool isDirectory(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_directory(path, ignored);
}

bool isFile(const std::string& path) {
  std::error_code ignored;
  return std::filesystem::is_regular_file(path, ignored);
}

}  // namespace

IconThemes::IconThemes(std::vector<std::string> directories, std::vector<std::string> themes)
    : directories_(std::move(directories)), themes_(std::move(themes)) {}

IconThemes IconThemes::ofUser(const Environment& environment, const std::string& homeDirectory) {
  const auto valueOr = [&](const char* name, std::string fallback) {
    std::string value = environment.value(name).value_or("");
    return value.empty() ? std::move(fallback) : value;
  };
  std::vector<std::string> directories = {
      homeDirectory + "/.icons",
      valueOr("XDG_DATA_HOME", homeDirectory + "/.local/share") + "/icons"};
  for (const std::string& data :
       text::split(valueOr("XDG_DATA_DIRS", "/usr/local/share:/usr/share"), ':')) {
    directories.push_back(data + "/icons");
  }

  std::vector<std::string> themes = {"Adwaita", "hicolor"};
  const GKeyFilePtr settings =
      loadKeyFile(valueOr("XDG_CONFIG_HOME", homeDirectory + "/.config") + "/gtk-3.0/settings.ini");
  const std::string chosen =
      settings ? stringValue(settings.get(), "Settings", "gtk-icon-theme-name") : "";
  if (!chosen.empty()) themes.insert(themes.begin(), chosen);
  return {std::move(directories), std::move(themes)};
}

bool IconThemes::contains(const std::string& iconName) {
  if (iconName.empty() || iconName.find('/') != std::string::npos) return false;
  if (!listing_) listing_ = list();
  const std::size_t hash = std::hash<std::string>()(iconName);
  if (!std::ranges::binary_search(listing_->nameHashes, hash)) return false;
  return std::ranges::any_of(listing_->leaves, [&](const std::string& leaf) {
    const std::string path = leaf + "/" + iconName;
    return isFile(path + ".svg") || isFile(path + ".png");
  });
}

bool IconThemes::hasFile(const std::string& path) const {
  return std::ranges::any_of(directories_, [&](const std::string& directory) {
    return isFile(std::string(directory).append("/").append(path));
  });
}

IconThemes::Listing IconThemes::list() const {
  Listing listing{.leaves = findLeaves()};
  for (const std::string& leaf : listing.leaves) {
    std::error_code ignored;
    for (const auto& entry : std::filesystem::directory_iterator(leaf, ignored)) {
      listing.nameHashes.push_back(std::hash<std::string>()(entry.path().stem().string()));
    }
  }
  std::ranges::sort(listing.nameHashes);
  listing.nameHashes.erase(std::unique(listing.nameHashes.begin(), listing.nameHashes.end()),
                           listing.nameHashes.end());
  listing.nameHashes.shrink_to_fit();
  return listing;
}

std::vector<std::string> IconThemes::findLeaves() const {
  std::vector<std::string> leaves;
  std::vector<std::string> themes = themes_;
  for (std::size_t i = 0; i < themes.size(); ++i) {
    for (const std::string& directory : directories_) {
      const std::string base = directory + "/" + themes[i] + "/";
      const GKeyFilePtr index = loadKeyFile(base + "index.theme");
      if (!index) continue;
      for (const std::string& parent :
           text::split(stringValue(index.get(), themeGroup, "Inherits"), ',')) {
        if (std::ranges::find(themes, parent) == themes.end()) themes.push_back(parent);
      }
      for (const std::string& leaf :
           text::split(stringValue(index.get(), themeGroup, "Directories"), ',')) {
        if (isDirectory(base + leaf)) leaves.push_back(base + leaf);
      }
    }
  }
  return leaves;
}

}  // namespace quillmar
