// The content of a window as lines of text.

#pragma once

#include <string>
#include <vector>

#include "platform/widgets/window.h"
#include "tests/views.h"

namespace quillmar {

/// A line for each view, two blanks of indentation before what lies in it: the kind, how it is laid
/// out and drawn, and its text behind a colon. "then 4" is a spacing of its own behind the view.
std::vector<std::string> windowOutline(const Window& window);

}  // namespace quillmar
