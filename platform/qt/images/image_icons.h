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

/// The colours for a template image: of normal text, and of selected text.
struct TemplateColors {
  QColor text;
  QColor selectedText;
};

/// The icon in these colours, `side` device-independent pixels wide and high, for a screen with so
/// many pixels to each. Made once: the toolkit remembers pixels by the icon that they came from, so
/// that icons made again and again would fill its memory.
QIcon tintedIcon(const Image& image, const TemplateColors& colors, int side,
                 qreal devicePixelRatio);

}  // namespace quillmar
