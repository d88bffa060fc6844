// Points, sizes and rectangles, in device-independent pixels. The y axis points down.

#pragma once

namespace quillmar {

struct Point {
  double x = 0;
  double y = 0;

  bool operator==(const Point&) const = default;
};

struct Size {
  double width = 0;
  double height = 0;

  bool operator==(const Size&) const = default;
};

struct Rect {
  Point origin;
  Size size;

  /// The rectangle, shrunk by `margin` on each side.
  Rect insetBy(double margin) const {
    return {.origin = {.x = origin.x + margin, .y = origin.y + margin},
            .size = {.width = size.width - 2 * margin, .height = size.height - 2 * margin}};
  }

  bool operator==(const Rect&) const = default;
};

}  // namespace quillmar
