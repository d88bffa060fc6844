// Icons as pixels, for panels that find none under an icon's name.

#pragma once

#include <string>

#include <gio/gio.h>

#include "platform/linux/appearance/appearance.h"

namespace quillmar {

/// The pixmaps of the icon in the folder, smallest first: `a(iiay)`, floating, of width, height and
/// rows of ARGB32 in network byte order. Nobody recolours a pixmap, so the colour is one for a
/// panel of this appearance; without one it is a grey with a contrast of 3:1 to both. The alpha
/// channels are read from files `iconName`-`size`.alpha each time; a missing or misshapen file is
/// left out.
GVariant* loadIconPixmaps(const std::string& directory, const std::string& iconName,
                          Appearance appearance);

}  // namespace quillmar
