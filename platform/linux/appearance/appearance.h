// Whether the desktop is light or dark, as its settings files say. Any thread.

#pragma once

#include <string>
#include <vector>

#include "platform/environment.h"

namespace quillmar {

enum class Appearance {
  /// Nothing says which.
  unknown,
  light,
  dark,
};

class AppearanceSettings {
 public:
  /// Those of the desktop that the environment names come first, then those of GTK, which most
  /// desktops keep.
  AppearanceSettings(const Environment& environment, const std::string& homeDirectory);

  /// Reads the files. The first that decides counts; the variable GTK_THEME comes before all.
  Appearance read() const;

  /// The files that decide, whether they exist or not.
  const std::vector<std::string>& files() const { return files_; }

  /// Of the settings file of KDE ("kdeglobals"), LXQt ("lxqt.conf") or GTK ("settings.ini") with
  /// this text.
  static Appearance ofText(const std::string& text);

 private:
  std::string forcedTheme_;
  std::vector<std::string> files_;
};

}  // namespace quillmar
