// Colours for windows on a dark desktop.

#pragma once

#include <QPalette>

namespace quillmar {

QPalette darkPalette();

}  // namespace quillmar
