// Fonts of the desktop.

#pragma once

#include <QFont>

#include "platform/font.h"

class QWidget;

namespace quillmar {

/// The desktop's font for such a widget in the size and weight that are meant.
QFont desktopFont(const Font& font, const QWidget& widget);

}  // namespace quillmar
