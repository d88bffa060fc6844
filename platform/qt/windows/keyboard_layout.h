// The user's keyboard layout, without the modifiers that the toolkit has applied to its events.

#pragma once

#include <optional>

#include <xkbcommon/xkbcommon.h>

class QKeyEvent;

namespace quillmar {

/// Starts to follow the layout. Called before the first window is shown.
void followKeyboardLayout();

/// The symbol that the key of the event has in the active layout without modifiers and locks; for
/// keys of the keypad, the digit. Absent if the layout is not known.
std::optional<xkb_keysym_t> keysymWithoutModifiers(const QKeyEvent& event);

/// The same for a key of a keymap.
xkb_keysym_t keysymWithoutModifiers(xkb_keymap& keymap, xkb_keycode_t key,
                                    xkb_layout_index_t layout);

}  // namespace quillmar
