// Canvases of custom views, and the colours of the desktop that they draw in.

#pragma once

#include <QColor>
#include <QPainter>
#include <QPalette>
#include <string>

#include "platform/widgets/canvas.h"

class QWidget;

namespace quillmar {

/// In the palette's current colour group.
QColor canvasColor(CanvasColor color, const QPalette& palette);

/// Draws on a widget, during its paint event.
class QtCanvas final : public Canvas {
 public:
  explicit QtCanvas(QWidget& widget);

  Size size() const override;
  void fill(const RoundedRect& shape, const Paint& paint) override;
  void stroke(const RoundedRect& shape, const Paint& paint, double lineWidth) override;
  Size textSize(const std::string& text, const Font& font) const override;
  void drawText(const std::string& text, const Point& origin, const Font& font,
                const Paint& paint) override;

  /// For parts that the view does not draw itself, such as the focus ring.
  QPainter& painter() { return painter_; }

 private:
  QColor colorOf(const Paint& paint) const;

  QWidget& widget_;
  QPainter painter_;
};

/// Draws nothing; determines how much space the texts of a view need.
class MeasuringCanvas final : public Canvas {
 public:
  /// `size` is the size that the view is told.
  MeasuringCanvas(const QWidget& widget, const Size& size) : widget_(widget), size_(size) {}

  /// The size of the widest text and of the highest.
  const Size& textSize() const { return textSize_; }

  Size size() const override { return size_; }
  void fill(const RoundedRect& /*shape*/, const Paint& /*paint*/) override {}
  void stroke(const RoundedRect& /*shape*/, const Paint& /*paint*/, double /*width*/) override {}
  Size textSize(const std::string& text, const Font& font) const override;
  void drawText(const std::string& text, const Point& origin, const Font& font,
                const Paint& paint) override;

 private:
  const QWidget& widget_;
  Size size_;
  Size textSize_;
};

}  // namespace quillmar
