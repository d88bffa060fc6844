// Renders a monochrome SVG icon to pixels, for panels that do not support icon names. A build tool.
//
//     render_pixmap ICON.svg SIZE OUTPUT
//
// The output is the alpha channel: SIZE rows of SIZE bytes. The program adds the colour.

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>

#include "cmake/tools/svg_surface.h"

namespace {

constexpr int maximumSize = 1024;

std::string alphaOf(cairo_surface_t* surface, int size) {
  constexpr unsigned alphaShift = 24;
  const unsigned char* row = cairo_image_surface_get_data(surface);
  std::string alpha;
  for (int y = 0; y < size; ++y) {
    const auto* pixels = reinterpret_cast<const std::uint32_t*>(row);
    for (int x = 0; x < size; ++x) alpha += static_cast<char>(pixels[x] >> alphaShift);
    row += cairo_image_surface_get_stride(surface);
  }
  return alpha;
}

}  // namespace

int main(int argc, char** argv) {
  const int size = argc == 4 ? std::atoi(argv[2]) : 0;
  if (size < 1 || size > maximumSize) {
    std::fputs("Usage: render_pixmap ICON.svg SIZE OUTPUT\n", stderr);
    return 2;
  }
  const Surface surface = drawSvg(argv[1], size);
  if (!surface) return 1;

  std::ofstream output(argv[3], std::ios::binary);
  output << alphaOf(surface.get(), size);
  output.close();
  if (!output) {
    std::fprintf(stderr, "%s cannot be written.\n", argv[3]);
    return 1;
  }
  return 0;
}
