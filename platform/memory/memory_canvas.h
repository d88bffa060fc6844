// A canvas that records what is drawn on it.

#pragma once

#include <string>
#include <variant>
#include <vector>

#include "platform/widgets/canvas.h"

namespace quillmar {

struct FilledShape {
  RoundedRect shape;
  Paint paint;

  bool operator==(const FilledShape&) const = default;
};

struct StrokedShape {
  RoundedRect shape;
  Paint paint;
  double lineWidth = 1;

  bool operator==(const StrokedShape&) const = default;
};

struct DrawnText {
  std::string text;
  Point origin;
  Font font;
  Paint paint;

  bool operator==(const DrawnText&) const = default;
};

/// In the order in which it was drawn.
using Drawing = std::vector<std::variant<FilledShape, StrokedShape, DrawnText>>;

class MemoryCanvas final : public Canvas {
 public:
  explicit MemoryCanvas(const Size& size) : size_(size) {}

  /// Fake metrics: each byte is half the font size wide, and a line is as high as the font size.
  static Size sizeOf(const std::string& text, const Font& font) {
    return {.width = static_cast<double>(text.size()) * font.size / 2, .height = font.size};
  }

  const Drawing& drawing() const { return drawing_; }

  Size size() const override { return size_; }
  void fill(const RoundedRect& shape, const Paint& paint) override {
    drawing_.emplace_back(FilledShape{.shape = shape, .paint = paint});
  }
  void stroke(const RoundedRect& shape, const Paint& paint, double lineWidth) override {
    drawing_.emplace_back(StrokedShape{.shape = shape, .paint = paint, .lineWidth = lineWidth});
  }
  Size textSize(const std::string& text, const Font& font) const override {
    return sizeOf(text, font);
  }
  void drawText(const std::string& text, const Point& origin, const Font& font,
                const Paint& paint) override {
    drawing_.emplace_back(DrawnText{.text = text, .origin = origin, .font = font, .paint = paint});
  }

 private:
  Size size_;
  Drawing drawing_;
};

}  // namespace quillmar
