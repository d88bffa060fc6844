#include "platform/linux/status_item/key_equivalent_shortcut.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

#include <glib.h>
#include <xkbcommon/xkbcommon.h>

#include "platform/virtual_key_codes.h"

namespace quillmar {

namespace {

constexpr gunichar firstFunctionKey = 0xF704;
constexpr gunichar lastFunctionKey = 0xF726;
constexpr gunichar backTab = 0x19;

/// A key that produces no printable character and is not in the table of virtual key codes. Key
/// equivalents encode it as a control or private-use character.
struct RareKey {
  gunichar character;
  xkb_keysym_t keysym;
};

constexpr auto rareKeys = std::to_array<RareKey>({
    {0x03, XKB_KEY_KP_Enter},
    {0x08, XKB_KEY_BackSpace},
    {0x0A, XKB_KEY_Return},
    {backTab, XKB_KEY_Tab},
    {0xF72A, XKB_KEY_Begin},
    {0xF72E, XKB_KEY_Print},
    {0xF72F, XKB_KEY_Scroll_Lock},
    {0xF730, XKB_KEY_Pause},
    {0xF731, XKB_KEY_Sys_Req},
    {0xF732, XKB_KEY_Break},
    {0xF738, XKB_KEY_Print},
    {0xF739, XKB_KEY_Clear},
    {0xF741, XKB_KEY_Select},
    {0xF742, XKB_KEY_Execute},
    {0xF743, XKB_KEY_Undo},
});

/// Qt's names of keys, where they differ from the names of the key symbols.
constexpr auto qtNames = std::to_array<std::pair<std::string_view, std::string_view>>({
    {"Delete", "Del"},
    {"Escape", "Esc"},
    {"Insert", "Ins"},
    {"KP_Enter", "Enter"},
    {"Next", "PgDown"},
    {"Prior", "PgUp"},
    {"Scroll_Lock", "ScrollLock"},
    {"Sys_Req", "SysReq"},
});

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

/// The name of the symbol of a key that produces no printable character; empty for other keys.
std::string specialKeysymName(gunichar character) {
  if (character >= firstFunctionKey && character <= lastFunctionKey) {
    return keysymName(XKB_KEY_F1 + (character - firstFunctionKey));
  }
  const auto rare = std::ranges::find(rareKeys, character, &RareKey::character);
  if (rare != rareKeys.end()) return keysymName(rare->keysym);
  if (g_unichar_isprint(character) && g_unichar_type(character) != G_UNICODE_PRIVATE_USE) return {};
  const VirtualKey* const key = virtualKeyForCharacter(character);
  return key == nullptr ? std::string() : std::string(key->keysym);
}

/// Empty when no key produces the character.
std::string keyName(gunichar character, ShortcutKeyNames names) {
  const std::string special = specialKeysymName(character);
  if (special.empty()) return nameOfCharacter(character, names);
  const auto qtName =
      std::ranges::find(qtNames, special, &std::pair<std::string_view, std::string_view>::first);
  const bool hasQtName = names == ShortcutKeyNames::qtKeys && qtName != qtNames.end();
  return hasQtName ? std::string(qtName->second) : special;
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
