// Icons as pixels, for panels that do not find an icon by its name.

#pragma once

#include <string>

#include <gio/gio.h>

#include "platform/linux/appearance/appearance.h"

namespace quillmar {

/// Loads the pixmaps of the icon from the folder, smallest first: `a(iiay)`, floating, with width,
/// height and rows of ARGB32 in network byte order. Panels do not recolour pixmaps, so the colour
/// suits a panel of this appearance. If that is unknown, it is a grey with a contrast of 3:1 to
/// both. The alpha channels are read from files `iconName`-`size`.alpha each time. A missing or
/// malformed file is skipped.
GVariant* loadIconPixmaps(const std::string& directory, const std::string& iconName,
                          Appearance appearance);

}  // namespace quillmar
