// Key presses of the toolkit as the widget model names them.

#pragma once

#include <optional>

#include "platform/key_equivalent.h"

class QKeyEvent;

namespace quillmar {

/// Nothing for a modifier alone and for keys that have no character.
std::optional<KeyEquivalent> keyEquivalentOf(const QKeyEvent& event);

}  // namespace quillmar
