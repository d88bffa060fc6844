#include "tests/qt/pictures.h"

#include <QPixmap>
#include <QWidget>
#include <algorithm>
#include <cmath>
#include <cstdlib>

#include "tests/qt/qt_user.h"

namespace quillmar {

namespace {

int distance(const QColor& one, const QColor& other) {
  return std::abs(one.red() - other.red()) + std::abs(one.green() - other.green()) +
         std::abs(one.blue() - other.blue());
}

/// Calls `see` with each pixel's place and its distance from the first one.
template <class See>
void walkPixels(const QImage& picture, const See& see) {
  const QColor paper = picture.pixelColor(0, 0);
  for (int y = 0; y < picture.height(); ++y) {
    for (int x = 0; x < picture.width(); ++x) {
      see(QPoint(x, y), distance(picture.pixelColor(x, y), paper));
    }
  }
}

double luminance(const QColor& color) {
  const auto linear = [](double share) {
    return share <= 0.04045 ? share / 12.92 : std::pow((share + 0.055) / 1.055, 2.4);
  };
  return 0.2126 * linear(color.redF()) + 0.7152 * linear(color.greenF()) +
         0.0722 * linear(color.blueF());
}

}  // namespace

QImage pictureOf(const View& view) {
  QWidget& widget = widgetOf(view);
  QWidget* const top = widget.window();
  return top->grab(QRect(widget.mapTo(top, QPoint(0, 0)), widget.size())).toImage();
}

QColor inkColor(const QImage& picture) {
  QColor ink = picture.pixelColor(0, 0);
  int farthest = 0;
  walkPixels(picture, [&](const QPoint& place, int difference) {
    if (difference <= farthest) return;
    farthest = difference;
    ink = picture.pixelColor(place);
  });
  return ink;
}

QRect inkFrame(const QImage& picture) {
  QRect frame;
  walkPixels(picture, [&](const QPoint& place, int difference) {
    if (difference > 0) frame |= QRect(place, QSize(1, 1));
  });
  return frame;
}

double inkShare(const QImage& picture) {
  double sum = 0;
  walkPixels(picture, [&](const QPoint& /*place*/, int difference) { sum += difference; });
  return sum / (3.0 * 255 * picture.width() * picture.height());
}

double contrast(const QColor& one, const QColor& other) {
  const double first = luminance(one);
  const double second = luminance(other);
  return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

}  // namespace quillmar
