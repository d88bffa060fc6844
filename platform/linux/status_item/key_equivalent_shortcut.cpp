#include "platform/linux/status_item/key_equivalent_shortcut.h"

#include <algorithm>
#include <array>
#include <string_view>

#include <glib.h>
#include <xkbcommon/xkbcommon.h>

namespace quillmar {

namespace {

constexpr gunichar firstFunctionKey = 0xF704;
constexpr gunichar lastFunctionKey = 0xF726;
constexpr gunichar backTab = 0x19;

/// A key that produces no printable character. Key equivalents encode it as a control or
/// private-use character.
struct SpecialKey {
  gunichar character;
  xkb_keysym_t keysym;
  /// Empty: Qt's name is that of the keysym.
  std::string_view qtName;
};

constexpr std::array<SpecialKey, 31> specialKeys = {{
    {0x03, XKB_KEY_KP_Enter, "Enter"},
    {0x08, XKB_KEY_BackSpace, {}},
    {0x09, XKB_KEY_Tab, {}},
    {0x0A, XKB_KEY_Return, {}},
    {0x0D, XKB_KEY_Return, {}},
    {backTab, XKB_KEY_Tab, {}},
    {0x1B, XKB_KEY_Escape, "Esc"},
    {0x7F, XKB_KEY_BackSpace, {}},
    {0xF700, XKB_KEY_Up, {}},
    {0xF701, XKB_KEY_Down, {}},
    {0xF702, XKB_KEY_Left, {}},
    {0xF703, XKB_KEY_Right, {}},
    {0xF727, XKB_KEY_Insert, "Ins"},
    {0xF728, XKB_KEY_Delete, "Del"},
    {0xF729, XKB_KEY_Home, {}},
    {0xF72A, XKB_KEY_Begin, {}},
    {0xF72B, XKB_KEY_End, {}},
    {0xF72C, XKB_KEY_Prior, "PgUp"},
    {0xF72D, XKB_KEY_Next, "PgDown"},
    {0xF72E, XKB_KEY_Print, {}},
    {0xF72F, XKB_KEY_Scroll_Lock, "ScrollLock"},
    {0xF730, XKB_KEY_Pause, {}},
    {0xF731, XKB_KEY_Sys_Req, "SysReq"},
    {0xF732, XKB_KEY_Break, {}},
    {0xF735, XKB_KEY_Menu, {}},
    {0xF738, XKB_KEY_Print, {}},
    {0xF739, XKB_KEY_Clear, {}},
    {0xF741, XKB_KEY_Select, {}},
    {0xF742, XKB_KEY_Execute, {}},
    {0xF743, XKB_KEY_Undo, {}},
    {0xF746, XKB_KEY_Help, {}},
}};

std::string keysymName(xkb_keysym_t keysym) {
  constexpr std::size_t longestName = 64;
  std::array<char, longestName> name{};
  if (xkb_keysym_get_name(keysym, name.data(), name.size()) <= 0) return {};
  return name.data();
}

std::string nameOfCharacter(gunichar character, ShortcutKeyNames names) {
  const bool isPrivate = g_unichar_type(character) == G_UNICODE_PRIVATE_USE;
  const bool isSpace = g_unichar_type(character) == G_UNICODE_SPACE_SEPARATOR;
  if (isPrivate || !(g_unichar_isgraph(character) || isSpace)) return {};
  // Qt panels expect the names of three keys that would be separators.
  const bool isNamedByAll = isSpace || character == '+' || character == '-';
  if (names == ShortcutKeyNames::qtKeys && !isNamedByAll) {
    std::array<char, 6> utf8{};
    return {utf8.data(), static_cast<std::size_t>(g_unichar_to_utf8(character, utf8.data()))};
  }
  return keysymName(xkb_utf32_to_keysym(character));
}

/// Empty when no key produces the character.
std::string keyName(gunichar character, ShortcutKeyNames names) {
  const auto special = std::ranges::find(specialKeys, character, &SpecialKey::character);
  if (special != specialKeys.end()) {
    const bool hasQtName = names == ShortcutKeyNames::qtKeys && !special->qtName.empty();
    return hasQtName ? std::string(special->qtName) : keysymName(special->keysym);
  }
  if (character >= firstFunctionKey && character <= lastFunctionKey) {
    return keysymName(XKB_KEY_F1 + (character - firstFunctionKey));
  }
  return nameOfCharacter(character, names);
}

}  // namespace

std::vector<std::string> shortcutForKeyEquivalent(const KeyEquivalent& keyEquivalent,
                                                  ShortcutKeyNames names) {
  const std::string& text = keyEquivalent.character;
  gunichar character = g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
  constexpr gunichar lastCodePoint = 0x10FFFF;
  if (character == 0 || character > lastCodePoint) return {};

  const bool isUpper = g_unichar_isupper(character);
  if (isUpper) character = g_unichar_tolower(character);
  std::string key = keyName(character, names);
  if (key.empty()) return {};

  const std::uint64_t mask = keyEquivalent.modifierMask;
  std::vector<std::string> shortcut;
  if (mask & modifiers::control) shortcut.emplace_back("Control");
  if (mask & modifiers::option) shortcut.emplace_back("Alt");
  if ((mask & modifiers::shift) || isUpper || character == backTab) shortcut.emplace_back("Shift");
  if (mask & modifiers::command) shortcut.emplace_back("Super");
  shortcut.push_back(std::move(key));
  return shortcut;
}

}  // namespace quillmar
