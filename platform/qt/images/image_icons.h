// Images as the toolkit draws them. Main thread.

#pragma once

#include <QColor>
#include <QIcon>
#include <QPixmap>
#include <optional>

#include "platform/image.h"

namespace quillmar {

/// The icon of that name in the icon theme; null for no image and for an unknown name.
QIcon iconOf(const std::optional<Image>& image);

/// Gives what is drawn in the pixmap one colour, as templates want it.
void tint(QPixmap& pixmap, const QColor& color);

}  // namespace quillmar
