// Icons as pixels, for panels that find none under an icon's name.

#pragma once

#include <string>

#include <gio/gio.h>

namespace quillmar {

/// The pixmaps of the icon in the folder, smallest first: `a(iiay)`, floating, of width, height and
/// rows of ARGB32 in network byte order. They are read from files `iconName`-`size`.argb32 each
/// time; a missing or misshapen file is left out.
GVariant* loadIconPixmaps(const std::string& directory, const std::string& iconName);

}  // namespace quillmar
