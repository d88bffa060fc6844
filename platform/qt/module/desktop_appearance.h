// Light or dark, where the toolkit by itself does not see which. Main thread.

#pragma once

#include "platform/environment.h"

namespace quillmar {

/// Gives the application a dark palette when the desktop prefers dark windows and the toolkit's own
/// palette is a light one. The preference is read from GTK's settings.ini, where most desktops put
/// it. Precondition: a QApplication.
void followDesktopAppearance(const Environment& environment);

}  // namespace quillmar
