#include "platform/qt/widgets/checkbox_indicator.h"

#include <QStyle>

#include "platform/qt/widgets/colors.h"

namespace quillmar {

namespace {

constexpr float edgeShare = 0.55F;
constexpr double edgeRadius = 2;

}  // namespace

void drawCheckboxIndicator(QPainter& painter, const QStyleOptionButton& option,
                           const QWidget& widget) {
  const QStyle& style = *widget.style();
  style.drawPrimitive(QStyle::PE_IndicatorCheckBox, &option, &painter, &widget);
  if (style.name() != QLatin1String("fusion")) return;

  const bool isEnabled = option.state & QStyle::State_Enabled;
  const QPalette::ColorGroup group = isEnabled ? QPalette::Active : QPalette::Disabled;
  painter.save();
  painter.setRenderHint(QPainter::Antialiasing);
  painter.setBrush(Qt::NoBrush);
  painter.setPen(mixed(option.palette.color(group, QPalette::Base),
                       option.palette.color(group, QPalette::Text), edgeShare));
  painter.drawRoundedRect(QRectF(option.rect).adjusted(0.5, 0.5, -0.5, -0.5), edgeRadius,
                          edgeRadius);
  painter.restore();
}

}  // namespace quillmar
