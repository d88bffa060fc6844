// Keys as the toolkit and as the widget model have them.

#pragma once

#include <QKeySequence>
#include <optional>

#include "platform/key_press.h"

class QKeyEvent;

namespace quillmar {

/// Absent for the press of a modifier, and for events without a key, as input methods make them.
std::optional<KeyPress> keyPressOf(const QKeyEvent& event);

/// Empty when the character is not one.
QKeySequence keySequenceOf(const KeyEquivalent& keyEquivalent);

}  // namespace quillmar
