#include "platform/qt/images/image_icons.h"

#include <QPainter>

namespace quillmar {

QIcon iconOf(const std::optional<Image>& image) {
  return image ? QIcon::fromTheme(QString::fromStdString(image->name)) : QIcon();
}

void tint(QPixmap& pixmap, const QColor& color) {
  QPainter painter(&pixmap);
  painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
  painter.fillRect(pixmap.rect(), color);
}

}  // namespace quillmar
