// The symbols as PNG pictures, for panels that do not find or do not recolour icons by their names.
// Main thread.

#pragma once

#include <memory>
#include <string>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

class SymbolPictures {
 public:
  /// Reads the picture file that the build makes. Without the file there are no pictures.
  explicit SymbolPictures(const std::string& file);

  /// The picture of the icon, in a dark colour for light menus or in a light colour for dark ones;
  /// null when the application does not ship an icon of that name.
  GBytesPtr png(const std::string& iconName, bool isMenuDark) const;

 private:
  std::unique_ptr<GResource, Releasing<g_resource_unref>> pictures_;
};

}  // namespace quillmar
