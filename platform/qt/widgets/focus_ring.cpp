#include "platform/qt/widgets/focus_ring.h"

#include <QPainter>
#include <QWidget>

namespace quillmar {

void drawFocusRing(QPainter& painter, const QWidget& widget, const QColor& color, int inset,
                   double radius) {
  const double middle = inset + focusRingWidth / 2.0;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(color, focusRingWidth));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(widget.rect()).adjusted(middle, middle, -middle, -middle), radius,
                          radius);
}

void drawFocusRing(QPainter& painter, const QRect& rectangle, const QColor& color) {
  constexpr double radius = 3;
  constexpr double middle = focusRingWidth / 2.0;
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setPen(QPen(color, focusRingWidth));
  painter.setBrush(Qt::NoBrush);
  painter.drawRoundedRect(QRectF(rectangle).adjusted(middle, middle, -middle, -middle), radius,
                          radius);
}

}  // namespace quillmar
