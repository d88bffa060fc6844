#include "platform/qt/widgets/icon_widget.h"

#include <QPainter>
#include <algorithm>

#include "platform/qt/images/image_icons.h"

namespace quillmar {

void IconWidget::setImage(const std::optional<Image>& image) {
  icon_ = iconOf(image);
  isTemplate_ = image && image->isTemplate;
  update();
}

void IconWidget::paintEvent(QPaintEvent* /*event*/) {
  const int side = std::min(width(), height());
  if (icon_.isNull() || side <= 0) return;
  // In the pixels of the screen, so that nothing is scaled when it is drawn.
  QPixmap pixmap = icon_.pixmap(QSize(side, side), devicePixelRatio(),
                                isEnabled() ? QIcon::Normal : QIcon::Disabled);
  if (isTemplate_) {
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    tint(pixmap, palette().color(group, QPalette::WindowText));
  }
  const QSizeF size = pixmap.deviceIndependentSize();
  QPainter painter(this);
  painter.drawPixmap(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), pixmap);
}

}  // namespace quillmar
