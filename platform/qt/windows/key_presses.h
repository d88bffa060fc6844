// Converts key events of the toolkit to key presses of the widget model.

#pragma once

#include <optional>

#include "platform/key_press.h"

class QKeyEvent;

namespace quillmar {

/// Absent for modifiers, and for events without a key, which input methods send.
std::optional<KeyPress> keyPressOf(const QKeyEvent& event);

}  // namespace quillmar
