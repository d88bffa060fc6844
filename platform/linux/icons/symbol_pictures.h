// The symbols as PNG pictures, for panels that do not find or do not recolour icons by their names.
// Main thread.

#pragma once

#include <map>
#include <string>
#include <utility>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

class SymbolPictures {
 public:
  /// `file` is the picture file that the build makes. Without the file there are no pictures.
  explicit SymbolPictures(std::string file) : file_(std::move(file)) {}

  /// The picture of the icon, in a dark colour for light menus or in a light colour for dark ones;
  /// null when the application does not ship an icon of that name.
  GBytesPtr png(const std::string& iconName, bool isMenuDark) const;

 private:
  std::string file_;
  /// The pictures that were asked for, by their path in the file; null for those that do not exist.
  /// The file itself stays open only while a picture is read, because its pages count as memory of
  /// the program.
  mutable std::map<std::string, GBytesPtr> pictures_;
};

}  // namespace quillmar
