// Light or dark appearance of the desktop, read from its settings files. Any thread.

#pragma once

#include <string>
#include <vector>

#include "platform/environment.h"

namespace quillmar {

enum class Appearance {
  /// No setting decides.
  unknown,
  light,
  dark,
};

class AppearanceSettings {
 public:
  /// Lists the settings files of the environment's desktop, then those of GTK, which most desktops
  /// maintain.
  AppearanceSettings(const Environment& environment, const std::string& homeDirectory);

  /// Reads the files. The first one with a preference decides. The variable GTK_THEME overrides
  /// them.
  Appearance read() const;

  /// The files to read, whether they exist or not.
  const std::vector<std::string>& files() const { return files_; }

  /// Parses the text of a settings file of KDE ("kdeglobals"), LXQt ("lxqt.conf") or GTK
  /// ("settings.ini").
  static Appearance ofText(const std::string& text);

 private:
  std::string forcedTheme_;
  std::vector<std::string> files_;
};

}  // namespace quillmar
