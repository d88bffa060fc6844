#include "platform/qt/widgets/qt_canvas.h"

#include <QFontMetricsF>
#include <QWidget>
#include <algorithm>
#include <cmath>

#include "platform/qt/widgets/colors.h"
#include "platform/qt/widgets/fonts.h"

namespace quillmar {

namespace {

// Parts of the text colour in colours that the palette does not have.
constexpr float secondaryShare = 0.72F;
constexpr float tertiaryShare = 0.58F;
constexpr float separatorShare = 0.28F;
/// Part of the colour of selected controls in the background of secondary labels.
constexpr float tintShare = 0.25F;

QRectF rectOf(const Rect& rect) {
  return {rect.origin.x, rect.origin.y, rect.size.width, rect.size.height};
}

Size sizeOf(const std::string& text, const Font& font, const QWidget& widget) {
  const QFontMetricsF metrics(desktopFont(font, widget), &widget);
  return {.width = metrics.horizontalAdvance(QString::fromStdString(text)),
          .height = metrics.height()};
}

}  // namespace

QColor canvasColor(CanvasColor color, const QPalette& palette) {
  const QColor text = palette.color(QPalette::Text);
  const QColor base = palette.color(QPalette::Base);
  switch (color) {
    case CanvasColor::accent:
    case CanvasColor::selectedControl:
      return palette.color(QPalette::Highlight);
    case CanvasColor::controlBackground:
      return base;
    case CanvasColor::label:
      return text;
    case CanvasColor::secondaryLabel:
      // Also on a control that is tinted with the colour of selected controls.
      return readableColor(
          mixed(base, text, secondaryShare),
          mixed(palette.color(QPalette::Window), palette.color(QPalette::Highlight), tintShare),
          text);
    case CanvasColor::separator:
      return mixed(palette.color(QPalette::Window), palette.color(QPalette::WindowText),
                   separatorShare);
    case CanvasColor::tertiaryLabel:
      return readableColor(mixed(base, text, tertiaryShare), base, text);
  }
  return text;
}

QtCanvas::QtCanvas(QWidget& widget) : widget_(widget), painter_(&widget) {
  painter_.setRenderHint(QPainter::Antialiasing);
}

Size QtCanvas::size() const {
  return {.width = double(widget_.width()), .height = double(widget_.height())};
}

QColor QtCanvas::colorOf(const Paint& paint) const {
  QColor color = canvasColor(paint.color, widget_.palette());
  color.setAlphaF(color.alphaF() * static_cast<float>(paint.alpha));
  return color;
}

void QtCanvas::fill(const RoundedRect& shape, const Paint& paint) {
  painter_.setPen(Qt::NoPen);
  painter_.setBrush(colorOf(paint));
  painter_.drawRoundedRect(rectOf(shape.rect), shape.radius, shape.radius);
}

void QtCanvas::stroke(const RoundedRect& shape, const Paint& paint, double lineWidth) {
  painter_.setPen(QPen(colorOf(paint), lineWidth));
  painter_.setBrush(Qt::NoBrush);
  painter_.drawRoundedRect(rectOf(shape.rect), shape.radius, shape.radius);
}

Size QtCanvas::textSize(const std::string& text, const Font& font) const {
  return sizeOf(text, font, widget_);
}

void QtCanvas::drawText(const std::string& text, const Point& origin, const Font& font,
                        const Paint& paint) {
  painter_.setFont(desktopFont(font, widget_));
  painter_.setPen(colorOf(paint));
  // Glyphs are sharp if their baseline is between two rows of pixels.
  const qreal scale = widget_.devicePixelRatioF();
  const qreal baseline =
      std::round((origin.y + QFontMetricsF(painter_.font(), &widget_).ascent()) * scale) / scale;
  painter_.drawText(QPointF(origin.x, baseline), QString::fromStdString(text));
}

Size MeasuringCanvas::textSize(const std::string& text, const Font& font) const {
  return sizeOf(text, font, widget_);
}

void MeasuringCanvas::drawText(const std::string& text, const Point& /*origin*/, const Font& font,
                               const Paint& /*paint*/) {
  const Size needed = textSize(text, font);
  textSize_ = {.width = std::max(textSize_.width, needed.width),
               .height = std::max(textSize_.height, needed.height)};
}

}  // namespace quillmar
