// Colours for windows if neither the toolkit nor the desktop provides any.

#pragma once

#include <QPalette>

namespace quillmar {

QPalette lightPalette();
QPalette darkPalette();

}  // namespace quillmar
