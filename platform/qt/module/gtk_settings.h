// The user's settings of the GTK toolkit, which most desktops maintain. They are read from the
// settings daemon of X11 displays, then from the toolkit's settings files. The first source with a
// value decides.

#pragma once

#include <QFont>
#include <optional>
#include <string>

#include "platform/environment.h"

namespace quillmar {

/// True if the name of the theme asks for dark windows. GTK_THEME in the environment takes
/// precedence.
bool settingsAskForDark(const Environment& environment);

/// The font of windows; absent if none is set.
std::optional<QFont> fontOfSettings(const Environment& environment);

/// True for the name of a theme's dark variant ("Adwaita-dark", "Adwaita:dark").
bool isDarkTheme(const std::string& name);

/// A font by its name and size in points at the end ("Noto Sans Bold 10"); absent without a size.
std::optional<QFont> fontNamed(const QString& description);

}  // namespace quillmar
