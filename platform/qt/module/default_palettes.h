// Colours for windows where neither the toolkit nor the desktop has any.

#pragma once

#include <QPalette>

namespace quillmar {

QPalette lightPalette();
QPalette darkPalette();

}  // namespace quillmar
