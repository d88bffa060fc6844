// Whether the user's settings of the GTK toolkit, which most desktops keep, ask for dark windows.

#pragma once

#include <string>

#include "platform/environment.h"

namespace quillmar {

/// Looks at the environment, at the desktop's settings service of X11 displays, and at the
/// toolkit's settings files, in this order: the first that names a theme decides.
bool settingsAskForDark(const Environment& environment);

/// True for the name of a theme's dark variant ("Adwaita-dark", "Adwaita:dark").
bool isDarkTheme(const std::string& name);

}  // namespace quillmar
