// Key equivalents in the form of the menu protocol: modifiers, then the name of a key.

#pragma once

#include <string>
#include <vector>

#include "platform/key_equivalent.h"
#include "platform/linux/status_item/panel_traits.h"

namespace quillmar {

/// The modifiers that are set, in the order "Control", "Alt", "Shift", "Super" (Command is Super,
/// Option is Alt), then the name of the first character's key. An upper-case letter is Shift and
/// the lower-case letter. Empty if there is no character or no key for it.
std::vector<std::string> shortcutForKeyEquivalent(
    const KeyEquivalent& keyEquivalent, ShortcutKeyNames names = ShortcutKeyNames::keysyms);

}  // namespace quillmar
