#include "platform/linux/hot_keys/portal_trigger.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "platform/hot_keys.h"
#include "platform/virtual_key_codes.h"

namespace quillmar {

namespace {

struct NamePair {
  std::string_view from;
  std::string_view to;
};

/// The names of keys whose symbols are not those of the virtual key. PC keyboards have no keys F13
/// to F20; X keyboard maps give them symbols of multimedia keys. Empty: no symbol.
constexpr auto symbolsOfKeys = std::to_array<NamePair>({
    {"F13", "XF86Tools"},
    {"F14", "XF86Launch5"},
    {"F15", "XF86Launch6"},
    {"F16", "XF86Launch7"},
    {"F17", "XF86Launch8"},
    {"F18", "XF86Launch9"},
    {"F19", ""},
    {"F20", "XF86AudioMicMute"},
    {"Help", "Insert"},
    {"Next", "Page_Down"},
    {"Prior", "Page_Up"},
    // Keys of Japanese keyboards; their symbols depend on the layout.
    {"KP_Separator", ""},
    {"underscore", ""},
    {"yen", ""},
    // Modifier keys.
    {"Alt_L", ""},
    {"Alt_R", ""},
    {"Caps_Lock", ""},
    {"Control_L", ""},
    {"Control_R", ""},
    {"Shift_L", ""},
    {"Shift_R", ""},
    {"Super_L", ""},
    {"Super_R", ""},
});

/// What keys type with Shift. The shifted symbol of a letter is the letter.
constexpr auto shiftedSymbols = std::to_array<NamePair>({
    {"0", "parenright"},
    {"1", "exclam"},
    {"2", "at"},
    {"3", "numbersign"},
    {"4", "dollar"},
    {"5", "percent"},
    {"6", "asciicircum"},
    {"7", "ampersand"},
    {"8", "asterisk"},
    {"9", "parenleft"},
    {"minus", "underscore"},
    {"equal", "plus"},
    {"bracketleft", "braceleft"},
    {"bracketright", "braceright"},
    {"semicolon", "colon"},
    {"apostrophe", "quotedbl"},
    {"grave", "asciitilde"},
    {"backslash", "bar"},
    {"comma", "less"},
    {"period", "greater"},
    {"slash", "question"},
    {"less", "greater"},
});

template <std::size_t count>
const NamePair* entryFor(const std::array<NamePair, count>& table, std::string_view name) {
  const auto found = std::ranges::find(table, name, &NamePair::from);
  return found == table.end() ? nullptr : &*found;
}

/// The symbol that the key types without modifiers; empty if there is none.
std::string_view symbolOf(std::uint32_t keyCode) {
  const auto keys = virtualKeys();
  const auto key = std::ranges::find(keys, keyCode, &VirtualKey::code);
  if (key == keys.end()) return {};
  const NamePair* const other = entryFor(symbolsOfKeys, key->keysym);
  return other ? other->to : key->keysym;
}

bool isFunctionKey(std::string_view symbol) {
  return symbol.size() > 1 && symbol[0] == 'F' &&
         std::ranges::all_of(symbol.substr(1), [](char c) { return c >= '0' && c <= '9'; });
}

/// KWin reads the keypad's digits as those of the main row, and does not match its other keys
/// without Shift.
bool worksOnKde(std::string_view symbol, bool withShift) {
  if (!symbol.starts_with("KP_") || symbol == "KP_Enter") return true;
  const bool isCursorKey = symbol == "KP_Decimal" || (symbol.back() >= '0' && symbol.back() <= '9');
  return withShift && !isCursorKey;
}

}  // namespace

std::optional<std::string> portalTrigger(const KeyCombination& keys, TriggerDialect dialect) {
  std::string_view symbol = symbolOf(keys.keyCode);
  if (symbol.empty()) return std::nullopt;
  const bool withControl = keys.modifiers & hotKeyModifiers::control;
  const bool withOption = keys.modifiers & hotKeyModifiers::option;
  bool withShift = keys.modifiers & hotKeyModifiers::shift;
  // These switch to another virtual console.
  if (isFunctionKey(symbol) && withControl && withOption && !withShift) return std::nullopt;
  if (dialect == TriggerDialect::kde) {
    if (!worksOnKde(symbol, withShift)) return std::nullopt;
    const NamePair* const shifted = withShift ? entryFor(shiftedSymbols, symbol) : nullptr;
    if (shifted) {
      symbol = shifted->to;
      withShift = false;
    }
  }
  std::string trigger;
  if (withControl) trigger += "CTRL+";
  if (withOption) trigger += "ALT+";
  if (withShift) trigger += "SHIFT+";
  if (keys.modifiers & hotKeyModifiers::command) trigger += "LOGO+";
  return trigger.append(symbol);
}

}  // namespace quillmar
