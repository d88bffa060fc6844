#include "platform/linux/appearance/appearance.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <fstream>
#include <iterator>
#include <optional>
#include <string_view>

#include <glib.h>

#include "platform/text.h"

namespace quillmar {

namespace {

std::string_view trimmed(std::string_view text) {
  constexpr std::string_view blanks = " \t\r";
  const std::size_t begin = std::min(text.find_first_not_of(blanks), text.size());
  return text.substr(begin, text.find_last_not_of(blanks) + 1 - begin);
}

/// Value of a key in a group of an INI file; absent if the key is missing. (GLib's parser rejects
/// the group names of kdeglobals.)
std::optional<std::string_view> iniValue(std::string_view text, std::string_view group,
                                         std::string_view key) {
  bool isInGroup = false;
  while (!text.empty()) {
    std::string_view line = text.substr(0, text.find('\n'));
    text.remove_prefix(std::min(line.size() + 1, text.size()));
    line = trimmed(line);
    if (line.starts_with('[')) {
      isInGroup = line.size() == group.size() + 2 && line.substr(1, group.size()) == group;
      continue;
    }
    const std::size_t equals = line.find('=');
    if (!isInGroup || equals == std::string_view::npos) continue;
    if (trimmed(line.substr(0, equals)) == key) return trimmed(line.substr(equals + 1));
  }
  return std::nullopt;
}

Appearance ofThemeName(std::string_view theme) {
  const auto endsWith = [theme](std::string_view end) {
    return theme.size() >= end.size() &&
           g_ascii_strncasecmp(theme.data() + theme.size() - end.size(), end.data(), end.size()) ==
               0;
  };
  return endsWith("-dark") || endsWith(":dark") ? Appearance::dark : Appearance::light;
}

using Color = std::array<int, 3>;

Appearance ofBackground(const Color& color) {
  constexpr int middle = 128;
  return (color[0] * 3 + color[1] * 6 + color[2]) / 10 < middle ? Appearance::dark
                                                                : Appearance::light;
}

bool readNumber(std::string_view digits, int base, int& number) {
  const auto [end, error] =
      std::from_chars(digits.data(), digits.data() + digits.size(), number, base);
  return error == std::errc() && end == digits.data() + digits.size();
}

/// Parses a colour such as "239,240,241" or "#eff0f1".
std::optional<Color> colorOf(std::string_view value) {
  Color color{};
  if (value.starts_with('#')) {
    if (value.size() != 7) return std::nullopt;
    for (std::size_t i = 0; i < 3; ++i) {
      if (!readNumber(value.substr(1 + 2 * i, 2), 16, color.at(i))) return std::nullopt;
    }
    return color;
  }
  const std::vector<std::string> parts = text::split(value, ',');
  if (parts.size() != 3) return std::nullopt;
  for (std::size_t i = 0; i < 3; ++i) {
    if (!readNumber(parts[i], 10, color.at(i))) return std::nullopt;
  }
  return color;
}

std::string readFile(const std::string& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

AppearanceSettings::AppearanceSettings(const Environment& environment,
                                       const std::string& homeDirectory)
    : forcedTheme_(environment.value("GTK_THEME").value_or("")) {
  std::string folder = environment.value("XDG_CONFIG_HOME").value_or("");
  if (folder.empty()) folder = homeDirectory + "/.config";
  for (const std::string& desktop :
       text::split(environment.value("XDG_CURRENT_DESKTOP").value_or(""), ':')) {
    if (desktop == "KDE") files_.push_back(folder + "/kdeglobals");
    if (desktop == "LXQt") files_.push_back(folder + "/lxqt/lxqt.conf");
  }
  files_.push_back(folder + "/gtk-4.0/settings.ini");
  files_.push_back(folder + "/gtk-3.0/settings.ini");
}

Appearance AppearanceSettings::read() const {
  if (!forcedTheme_.empty()) return ofThemeName(forcedTheme_);
  for (const std::string& file : files_) {
    const Appearance appearance = ofText(readFile(file));
    if (appearance != Appearance::unknown) return appearance;
  }
  return Appearance::unknown;
}

Appearance AppearanceSettings::ofText(const std::string& text) {
  for (const auto& background : {iniValue(text, "Colors:Window", "BackgroundNormal"),
                                 iniValue(text, "Palette", "window_color")}) {
    const auto color = background ? colorOf(*background) : std::nullopt;
    if (color) return ofBackground(*color);
  }
  const auto prefersDark = iniValue(text, "Settings", "gtk-application-prefer-dark-theme");
  if (prefersDark == "1" || prefersDark == "true") return Appearance::dark;
  if (const auto theme = iniValue(text, "Settings", "gtk-theme-name")) return ofThemeName(*theme);
  return prefersDark ? Appearance::light : Appearance::unknown;
}

}  // namespace quillmar
