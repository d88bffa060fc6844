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

/// Gives everything in the pixmap this colour, as template images need it.
void tint(QPixmap& pixmap, const QColor& color);

/// The colours for a template image: of normal text, and of selected text.
struct TemplateColors {
  QColor text;
  QColor selectedText;
};

/// The icon in these colours, `side` device-independent pixels wide and high, at the given device
/// pixel ratio. Icons are cached: the toolkit caches pixmaps per icon, so creating the same icon
/// repeatedly would fill its cache.
QIcon tintedIcon(const Image& image, const TemplateColors& colors, int side,
                 qreal devicePixelRatio);

}  // namespace quillmar
