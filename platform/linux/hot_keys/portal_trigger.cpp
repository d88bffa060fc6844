#include "platform/linux/hot_keys/portal_trigger.h"

#include <algorithm>
#include <string_view>

#include "platform/hot_keys.h"

namespace quillmar {

namespace {

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isFunctionKey(std::string_view symbol) {
  return symbol.size() > 1 && symbol[0] == 'F' && std::ranges::all_of(symbol.substr(1), isDigit);
}

/// KWin reads the keypad's digits as those of the main row, and does not match its other keys
/// without Shift, nor dead keys.
bool worksOnKde(std::string_view symbol, bool withShift) {
  if (symbol.starts_with("dead_")) return false;
  if (!symbol.starts_with("KP_") || symbol == "KP_Enter") return true;
  const bool isDigitKey =
      symbol == "KP_Decimal" || symbol == "KP_Separator" || isDigit(symbol.back());
  return withShift && !isDigitKey;
}

}  // namespace

std::optional<std::string> portalTrigger(const KeySymbols& key, std::uint32_t modifiers,
                                         TriggerDialect dialect) {
  if (key.plain.empty()) return std::nullopt;
  std::string symbol = key.plain;
  const bool withControl = modifiers & hot_key_modifiers::control;
  const bool withOption = modifiers & hot_key_modifiers::option;
  bool withShift = modifiers & hot_key_modifiers::shift;
  // These switch to another virtual console.
  if (isFunctionKey(symbol) && withControl && withOption && !withShift) return std::nullopt;
  if (dialect == TriggerDialect::kde) {
    if (!worksOnKde(symbol, withShift)) return std::nullopt;
    if (withShift && !key.shifted.empty()) {
      symbol = key.shifted;
      withShift = false;
    }
  }
  std::string trigger;
  if (withControl) trigger += "CTRL+";
  if (withOption) trigger += "ALT+";
  if (withShift) trigger += "SHIFT+";
  if (modifiers & hot_key_modifiers::command) trigger += "LOGO+";
  return trigger + symbol;
}

}  // namespace quillmar
