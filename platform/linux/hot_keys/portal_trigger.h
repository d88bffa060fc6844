// Key combinations as the GlobalShortcuts portal writes them: modifiers and the name of a key
// symbol, such as "SHIFT+LOGO+k".

#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/linux/hot_keys/key_symbols.h"

namespace quillmar {

/// How a desktop reads triggers.
enum class TriggerDialect {
  /// As documented.
  documented,
  /// KDE: a shifted character is named itself, without SHIFT ("CTRL+at"). Some keys never fire.
  kde,
};

/// Absent if the desktop has no working trigger for the key with these modifiers (bits of
/// hot_key_modifiers). Combinations with the same trigger are the same to the desktop.
std::optional<std::string> portalTrigger(const KeySymbols& key, std::uint32_t modifiers,
                                         TriggerDialect dialect);

}  // namespace quillmar
