#include "platform/qt/module/gtk_settings.h"

#include <QSettings>
#include <QString>
#include <QStringList>
#include <algorithm>
#include <array>

#include "platform/qt/module/settings_folder.h"
#include "platform/qt/module/x11_settings.h"

namespace quillmar {

namespace {

constexpr std::array versions = {"gtk-4.0", "gtk-3.0"};

std::string settingsFile(const Environment& environment, const char* version) {
  return settingsFolder(environment) + "/" + version + "/settings.ini";
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
  for (const char* const version : versions) {
    const auto dark = darkByFile(settingsFile(environment, version));
    if (dark) return *dark;
  }
  return false;
}

std::optional<QFont> fontNamed(const QString& description) {
  const QStringList words = description.split(QLatin1Char(' '), Qt::SkipEmptyParts);
  bool isNumber = false;
  const double size = words.isEmpty() ? 0 : words.back().toDouble(&isNumber);
  if (!isNumber || size <= 0 || words.size() < 2) return std::nullopt;
  QFont font;
  const bool isBold = words[words.size() - 2] == QLatin1String("Bold");
  const qsizetype familyWords = words.size() - (isBold ? 2 : 1);
  font.setFamily(words.first(familyWords).join(QLatin1Char(' ')));
  font.setPointSizeF(size);
  font.setBold(isBold);
  return font;
}

std::optional<QFont> fontOfSettings(const Environment& environment) {
  if (auto font = fontNamed(QString::fromStdString(x11StringSetting("Gtk/FontName")))) {
    return font;
  }
  for (const char* const version : versions) {
    const QSettings file(QString::fromStdString(settingsFile(environment, version)),
                         QSettings::IniFormat);
    auto font = fontNamed(file.value(QStringLiteral("Settings/gtk-font-name")).toString());
    if (font) return font;
  }
  return std::nullopt;
}

}  // namespace quillmar
