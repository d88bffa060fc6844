// Key events of the toolkit as the widget model has them.

#pragma once

#include <optional>

#include "platform/key_press.h"

class QKeyEvent;

namespace quillmar {

/// Absent for the press of a modifier, and for events without a key, as input methods make them.
std::optional<KeyPress> keyPressOf(const QKeyEvent& event);

}  // namespace quillmar
