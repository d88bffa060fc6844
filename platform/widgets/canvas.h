// What a custom view draws on: shapes and text in the colours and fonts of the desktop. Later
// drawing covers earlier drawing. Valid during CustomView::draw() only.

#pragma once

#include <string>

#include "platform/font.h"
#include "platform/widgets/geometry.h"

namespace quillmar {

/// Semantic colours; the desktop's palette defines the actual ones. Labels are readable on the
/// control background, and grow paler from `label` to `tertiaryLabel`.
enum class CanvasColor {
  accent,
  controlBackground,
  label,
  secondaryLabel,
  selectedControl,
  separator,
  tertiaryLabel,
};

struct Paint {
  CanvasColor color = CanvasColor::label;
  /// From 0 (invisible) to 1 (opaque).
  double alpha = 1;

  bool operator==(const Paint&) const = default;
};

struct RoundedRect {
  Rect rect;
  double radius = 0;

  bool operator==(const RoundedRect&) const = default;
};

class Canvas {
 public:
  virtual ~Canvas() = default;

  /// The size of the view. The origin is its top left corner.
  virtual Size size() const = 0;

  virtual void fill(const RoundedRect& shape, const Paint& paint) = 0;
  /// Draws a line along the edge of the shape; half of its width is inside.
  virtual void stroke(const RoundedRect& shape, const Paint& paint, double lineWidth) = 0;

  /// The size of the text in one line.
  virtual Size textSize(const std::string& text, const Font& font) const = 0;
  /// Draws the text in one line. `origin` is the top left corner of the line.
  virtual void drawText(const std::string& text, const Point& origin, const Font& font,
                        const Paint& paint) = 0;
};

}  // namespace quillmar
