// Draws SVG files, for the build tools.

#pragma once

#include <cstdio>
#include <memory>
#include <string>

#include <cairo.h>
#include <librsvg/rsvg.h>

template <auto function>
struct Releasing {
  template <class T>
  void operator()(T* object) const {
    function(object);
  }
};

using Surface = std::unique_ptr<cairo_surface_t, Releasing<cairo_surface_destroy>>;
using Context = std::unique_ptr<cairo_t, Releasing<cairo_destroy>>;

/// The icon, `size` pixels wide and high. On failure, prints an error and returns null.
inline Surface drawSvg(const std::string& icon, int size) {
  GError* error = nullptr;
  const std::unique_ptr<RsvgHandle, Releasing<g_object_unref>> handle(
      rsvg_handle_new_from_file(icon.c_str(), &error));
  Surface surface(cairo_image_surface_create(CAIRO_FORMAT_ARGB32, size, size));
  const Context context(cairo_create(surface.get()));
  const double side = size;
  const RsvgRectangle viewport = {0, 0, side, side};
  if (!handle || !rsvg_handle_render_document(handle.get(), context.get(), &viewport, &error)) {
    std::fprintf(stderr, "%s: %s\n", icon.c_str(), error ? error->message : "It cannot be drawn.");
    g_clear_error(&error);
    return nullptr;
  }
  cairo_surface_flush(surface.get());
  return surface;
}
