#include "platform/qt/module/dark_settings.h"

#include <QSettings>
#include <QString>
#include <algorithm>
#include <optional>

#include "platform/qt/module/x11_settings.h"

namespace quillmar {

namespace {

std::string settingsFolder(const Environment& environment) {
  const std::string folder = environment.value("XDG_CONFIG_HOME").value_or("");
  return folder.empty() ? environment.value("HOME").value_or("") + "/.config" : folder;
}

/// Absent when the file says nothing.
std::optional<bool> darkByFile(const std::string& path) {
  const QSettings file(QString::fromStdString(path), QSettings::IniFormat);
  const QString prefersDark = QStringLiteral("Settings/gtk-application-prefer-dark-theme");
  const QString theme = QStringLiteral("Settings/gtk-theme-name");
  if (file.value(prefersDark).toBool()) return true;
  if (file.contains(theme)) return isDarkTheme(file.value(theme).toString().toStdString());
  if (file.contains(prefersDark)) return false;
  return std::nullopt;
}

}  // namespace

bool isDarkTheme(const std::string& name) {
  std::string lower = name;
  std::transform(lower.begin(), lower.end(), lower.begin(),
                 [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c + 32) : c; });
  return lower.ends_with("-dark") || lower.ends_with(":dark");
}

bool settingsAskForDark(const Environment& environment) {
  const std::string forced = environment.value("GTK_THEME").value_or("");
  if (!forced.empty()) return isDarkTheme(forced);
  const std::string ofDisplay = x11StringSetting("Net/ThemeName");
  if (!ofDisplay.empty()) return isDarkTheme(ofDisplay);
  for (const char* const version : {"gtk-4.0", "gtk-3.0"}) {
    const auto dark = darkByFile(settingsFolder(environment) + "/" + version + "/settings.ini");
    if (dark) return *dark;
  }
  return false;
}

}  // namespace quillmar
