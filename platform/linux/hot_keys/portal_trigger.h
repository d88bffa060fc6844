// Key combinations as the GlobalShortcuts portal writes them: modifiers and the name of a key
// symbol, such as "LOGO+SHIFT+k".
//
// The portal names a key by what it types, not by its position. The names here are those of a US
// keyboard.

#pragma once

#include <compare>
#include <cstdint>
#include <optional>
#include <string>

namespace quillmar {

struct KeyCombination {
  /// Virtual key code (platform/virtual_key_codes.h).
  std::uint32_t keyCode = 0;
  /// Bits of hotKeyModifiers.
  std::uint32_t modifiers = 0;

  auto operator<=>(const KeyCombination&) const = default;
};

/// How a desktop reads triggers.
enum class TriggerDialect {
  /// As documented.
  documented,
  /// KDE: a shifted character is named itself, without SHIFT ("CTRL+at"). Some keys never fire.
  kde,
};

/// Absent if the desktop has no working trigger for the combination. Combinations with the same
/// trigger are the same to the desktop.
std::optional<std::string> portalTrigger(const KeyCombination& keys, TriggerDialect dialect);

}  // namespace quillmar
