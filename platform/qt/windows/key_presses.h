// Keys of the toolkit and as the model names them.

#pragma once

#include <QKeySequence>
#include <optional>

#include "platform/key_equivalent.h"

class QKeyEvent;

namespace quillmar {

/// Nothing for a modifier alone and for keys that have no character.
std::optional<KeyEquivalent> keyEquivalentOf(const QKeyEvent& event);

/// Empty when the character is not one.
QKeySequence keySequenceOf(const KeyEquivalent& keyEquivalent);

}  // namespace quillmar
