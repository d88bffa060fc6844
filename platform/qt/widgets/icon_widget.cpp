#include "platform/qt/widgets/icon_widget.h"

#include <QPainter>
#include <algorithm>

namespace quillmar {

void IconWidget::setImage(const std::optional<Image>& image) {
  icon_ = image ? QIcon::fromTheme(QString::fromStdString(image->name)) : QIcon();
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
    QPainter tint(&pixmap);
    tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
    const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
    tint.fillRect(pixmap.rect(), palette().color(group, QPalette::WindowText));
  }
  const QSizeF size = pixmap.deviceIndependentSize();
  QPainter painter(this);
  painter.drawPixmap(QPointF((width() - size.width()) / 2, (height() - size.height()) / 2), pixmap);
}

}  // namespace quillmar
