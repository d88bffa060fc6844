// Fonts of the desktop.

#pragma once

#include <QFont>

#include "platform/font.h"

class QWidget;

namespace quillmar {

/// The desktop's font for such a widget, in the given size and weight.
QFont desktopFont(const Font& font, const QWidget& widget);

}  // namespace quillmar
