// Text sizes and weights.

#pragma once

namespace quillmar {

enum class FontWeight { regular, semibold, bold };

/// A font of the desktop. Sizes are relative: 13 is the desktop's default size, and other sizes
/// scale in proportion.
struct Font {
  static constexpr double defaultSize = 13;

  double size = defaultSize;
  FontWeight weight = FontWeight::regular;
  bool monospaced = false;

  static Font system(double size) { return {.size = size}; }
  static Font boldSystem(double size) { return {.size = size, .weight = FontWeight::bold}; }

  bool operator==(const Font&) const = default;
};

}  // namespace quillmar
