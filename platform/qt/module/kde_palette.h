// The colours of the Plasma desktop. The toolkit reads them too, but falls back to outdated
// defaults if the user has never chosen a colour scheme.

#pragma once

#include <QPalette>
#include <QString>

#include "platform/environment.h"

namespace quillmar {

/// True on a Plasma desktop.
bool isKde(const Environment& environment);

/// The user's settings file for all programs of the desktop.
QString kdeSettingsFile(const Environment& environment);

/// The colours in that file. Missing ones are those of the desktop's light default.
QPalette kdePalette(const QString& settingsFile);

}  // namespace quillmar
