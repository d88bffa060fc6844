// Renders a monochrome SVG icon to pixels, for panels that take no icon names.
//
//     render_pixmap ICON.svg SIZE OUTPUT
//
// The output is SIZE rows of SIZE pixels, each alpha, red, green, blue, not premultiplied. Every
// pixel has one middle tone, as nobody tints a pixmap: it stands out from light panels and from
// dark ones. Runs when the program is built.

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <memory>
#include <string>

#include <cairo.h>
#include <librsvg/rsvg.h>

namespace {

constexpr int maximumSize = 1024;
constexpr char red = 0x7d;
constexpr char green = static_cast<char>(0x87);
constexpr char blue = static_cast<char>(0xa0);

template <auto function>
struct Releasing {
  template <class T>
  void operator()(T* object) const {
    function(object);
  }
};

/// The coverage of each pixel; empty after a failure, which is reported.
std::string renderCoverage(const char* icon, int size) {
  GError* error = nullptr;
  const std::unique_ptr<RsvgHandle, Releasing<g_object_unref>> handle(
      rsvg_handle_new_from_file(icon, &error));
  const std::unique_ptr<cairo_surface_t, Releasing<cairo_surface_destroy>> surface(
      cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size, size));
  const std::unique_ptr<cairo_t, Releasing<cairo_destroy>> context(cairo_create(surface.get()));
  const double side = size;
  const RsvgRectangle viewport = {0, 0, side, side};
  if (!handle || !rsvg_handle_render_document(handle.get(), context.get(), &viewport, &error)) {
    std::fprintf(stderr, "%s: %s\n", icon, error ? error->message : "It cannot be drawn.");
    g_clear_error(&error);
    return {};
  }
  cairo_surface_flush(surface.get());

  constexpr unsigned alphaShift = 24;
  const unsigned char* row = cairo_image_surface_get_data(surface.get());
  std::string coverage;
  for (int y = 0; y < size; ++y) {
    const auto* pixels = reinterpret_cast<const std::uint32_t*>(row);
    for (int x = 0; x < size; ++x) coverage += static_cast<char>(pixels[x] >> alphaShift);
    row += cairo_image_surface_get_stride(surface.get());
  }
  return coverage;
}

}  // namespace

int main(int argc, char** argv) {
  const int size = argc == 4 ? std::atoi(argv[2]) : 0;
  if (size < 1 || size > maximumSize) {
    std::fputs("Usage: render_pixmap ICON.svg SIZE OUTPUT\n", stderr);
    return 2;
  }
  const std::string coverage = renderCoverage(argv[1], size);
  if (coverage.empty()) return 1;

  std::ofstream output(argv[3], std::ios::binary);
  for (const char alpha : coverage) output << alpha << red << green << blue;
  output.close();
  if (!output) {
    std::fprintf(stderr, "%s cannot be written.\n", argv[3]);
    return 1;
  }
  return 0;
}
