// Renders a folder of monochrome SVG icons to PNG images, for light and for dark menus. A build
// tool.
//
//     render_symbols FOLDER OUTPUT
//
// NAME.svg becomes OUTPUT/light/NAME.png and OUTPUT/dark/NAME.png. OUTPUT/symbols.gresource.xml
// lists them for glib-compile-resources.

#include <array>
#include <cstdio>
#include <filesystem>
#include <fstream>

#include "cmake/tools/svg_surface.h"

namespace {

namespace fs = std::filesystem;

/// The size of icons in menus, in pixels.
constexpr int side = 16;

struct Kind {
  const char* name;
  /// The symbol's grey, from 0 to 1.
  double tone;
};
// Both also have a contrast of 3:1 to the blue of the selected entry.
constexpr std::array<Kind, 2> kinds = {{{"light", 0.1}, {"dark", 0.99}}};

bool writePicture(cairo_surface_t* surface, const Kind& kind, const fs::path& file) {
  const Context context(cairo_create(surface));
  cairo_set_operator(context.get(), CAIRO_OPERATOR_IN);
  cairo_set_source_rgb(context.get(), kind.tone, kind.tone, kind.tone);
  cairo_paint(context.get());
  if (cairo_surface_write_to_png(surface, file.c_str()) == CAIRO_STATUS_SUCCESS) return true;
  std::fprintf(stderr, "%s cannot be written.\n", file.c_str());
  return false;
}

}  // namespace

int main(int argc, char** argv) {
  if (argc != 3) {
    std::fputs("Usage: render_symbols FOLDER OUTPUT\n", stderr);
    return 2;
  }
  const fs::path output = argv[2];
  for (const Kind& kind : kinds) fs::create_directories(output / kind.name);
  std::ofstream list(output / "symbols.gresource.xml");
  list << "<gresources><gresource prefix=\"/\">\n";
  for (const auto& entry : fs::directory_iterator(argv[1])) {
    const Surface surface = drawSvg(entry.path(), side);
    if (!surface) return 1;
    for (const Kind& kind : kinds) {
      const fs::path file = fs::path(kind.name) / entry.path().stem().concat(".png");
      if (!writePicture(surface.get(), kind, output / file)) return 1;
      list << "<file>" << file.string() << "</file>\n";
    }
  }
  list << "</gresource></gresources>\n";
  return list.flush() ? 0 : 1;
}
