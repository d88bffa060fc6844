// Key equivalents in the words of the menu protocol: modifiers, then the name of a keysym.

#pragma once

#include <string>
#include <vector>

#include "platform/menu.h"

namespace quillmar {

/// The modifiers that are set, in the order "Control", "Alt", "Shift", "Super" (Command is Super,
/// Option is Alt), and the keysym name of the first character ("a", "comma", "Prior", "F5",
/// "U20AC"). An upper-case letter is Shift with the lower-case one. Empty when there is no
/// character or no key produces it.
std::vector<std::string> shortcutForKeyEquivalent(const KeyEquivalent& keyEquivalent);

}  // namespace quillmar
