#include "platform/linux/status_item/key_equivalent_shortcut.h"

#include <array>
#include <cstdio>
#include <string_view>

#include <glib.h>

namespace quillmar {

namespace {

/// U+0020 to U+002F, and the other printable ASCII characters that are not letters or digits.
constexpr std::array<std::string_view, 16> fromSpace = {
    "space",     "exclam",     "quotedbl",  "numbersign", "dollar",   "percent",
    "ampersand", "apostrophe", "parenleft", "parenright", "asterisk", "plus",
    "comma",     "minus",      "period",    "slash"};
constexpr std::array<std::string_view, 7> fromColon = {"colon",   "semicolon", "less", "equal",
                                                       "greater", "question",  "at"};
constexpr std::array<std::string_view, 6> fromBracketLeft = {
    "bracketleft", "backslash", "bracketright", "asciicircum", "underscore", "grave"};
constexpr std::array<std::string_view, 4> fromBraceLeft = {"braceleft", "bar", "braceright",
                                                           "asciitilde"};

/// U+00A0 to U+00FF.
constexpr std::array<std::string_view, 96> fromNoBreakSpace = {"nobreakspace",
                                                               "exclamdown",
                                                               "cent",
                                                               "sterling",
                                                               "currency",
                                                               "yen",
                                                               "brokenbar",
                                                               "section",
                                                               "diaeresis",
                                                               "copyright",
                                                               "ordfeminine",
                                                               "guillemotleft",
                                                               "notsign",
                                                               "hyphen",
                                                               "registered",
                                                               "macron",
                                                               "degree",
                                                               "plusminus",
                                                               "twosuperior",
                                                               "threesuperior",
                                                               "acute",
                                                               "mu",
                                                               "paragraph",
                                                               "periodcentered",
                                                               "cedilla",
                                                               "onesuperior",
                                                               "masculine",
                                                               "guillemotright",
                                                               "onequarter",
                                                               "onehalf",
                                                               "threequarters",
                                                               "questiondown",
                                                               "Agrave",
                                                               "Aacute",
                                                               "Acircumflex",
                                                               "Atilde",
                                                               "Adiaeresis",
                                                               "Aring",
                                                               "AE",
                                                               "Ccedilla",
                                                               "Egrave",
                                                               "Eacute",
                                                               "Ecircumflex",
                                                               "Ediaeresis",
                                                               "Igrave",
                                                               "Iacute",
                                                               "Icircumflex",
                                                               "Idiaeresis",
                                                               "ETH",
                                                               "Ntilde",
                                                               "Ograve",
                                                               "Oacute",
                                                               "Ocircumflex",
                                                               "Otilde",
                                                               "Odiaeresis",
                                                               "multiply",
                                                               "Oslash",
                                                               "Ugrave",
                                                               "Uacute",
                                                               "Ucircumflex",
                                                               "Udiaeresis",
                                                               "Yacute",
                                                               "THORN",
                                                               "ssharp",
                                                               "agrave",
                                                               "aacute",
                                                               "acircumflex",
                                                               "atilde",
                                                               "adiaeresis",
                                                               "aring",
                                                               "ae",
                                                               "ccedilla",
                                                               "egrave",
                                                               "eacute",
                                                               "ecircumflex",
                                                               "ediaeresis",
                                                               "igrave",
                                                               "iacute",
                                                               "icircumflex",
                                                               "idiaeresis",
                                                               "eth",
                                                               "ntilde",
                                                               "ograve",
                                                               "oacute",
                                                               "ocircumflex",
                                                               "otilde",
                                                               "odiaeresis",
                                                               "division",
                                                               "oslash",
                                                               "ugrave",
                                                               "uacute",
                                                               "ucircumflex",
                                                               "udiaeresis",
                                                               "yacute",
                                                               "thorn",
                                                               "ydiaeresis"};

constexpr gunichar firstFunctionKey = 0xF704;
constexpr gunichar lastFunctionKey = 0xF726;
constexpr gunichar backTab = 0x19;

struct NamedKey {
  gunichar character;
  std::string_view keysym;
};

constexpr std::array<NamedKey, 31> namedKeys = {{
    {0x03, "KP_Enter"},      {0x08, "BackSpace"}, {0x09, "Tab"},       {0x0A, "Return"},
    {0x0D, "Return"},        {backTab, "Tab"},    {0x1B, "Escape"},    {0x7F, "BackSpace"},
    {0xF700, "Up"},          {0xF701, "Down"},    {0xF702, "Left"},    {0xF703, "Right"},
    {0xF727, "Insert"},      {0xF728, "Delete"},  {0xF729, "Home"},    {0xF72A, "Begin"},
    {0xF72B, "End"},         {0xF72C, "Prior"},   {0xF72D, "Next"},    {0xF72E, "Print"},
    {0xF72F, "Scroll_Lock"}, {0xF730, "Pause"},   {0xF731, "Sys_Req"}, {0xF732, "Break"},
    {0xF735, "Menu"},        {0xF738, "Print"},   {0xF739, "Clear"},   {0xF741, "Select"},
    {0xF742, "Execute"},     {0xF743, "Undo"},    {0xF746, "Help"},
}};

template <std::size_t size>
std::string_view named(const std::array<std::string_view, size>& names, gunichar first,
                       gunichar character) {
  return character >= first && character < first + size ? names[character - first]
                                                        : std::string_view{};
}

std::string_view nameInTables(gunichar character) {
  for (const NamedKey& key : namedKeys) {
    if (key.character == character) return key.keysym;
  }
  for (const std::string_view name :
       {named(fromSpace, 0x20, character), named(fromColon, 0x3A, character),
        named(fromBracketLeft, 0x5B, character), named(fromBraceLeft, 0x7B, character),
        named(fromNoBreakSpace, 0xA0, character)}) {
    if (!name.empty()) return name;
  }
  return {};
}

/// Empty when no key produces the character.
std::string keysymName(gunichar character) {
  if (const std::string_view name = nameInTables(character); !name.empty()) {
    return std::string(name);
  }
  if (character >= firstFunctionKey && character <= lastFunctionKey) {
    return std::string("F").append(std::to_string(character - firstFunctionKey + 1));
  }
  if (character < 0x80 && g_ascii_isalnum(static_cast<char>(character))) {
    return {static_cast<char>(character)};
  }
  const bool isPrivate = g_unichar_type(character) == G_UNICODE_PRIVATE_USE;
  if (isPrivate || !g_unichar_isgraph(character)) return {};
  std::array<char, 16> name{};
  std::snprintf(name.data(), name.size(), "U%04X", character);
  return name.data();
}

}  // namespace

std::vector<std::string> shortcutForKeyEquivalent(const KeyEquivalent& keyEquivalent) {
  const std::string& text = keyEquivalent.character;
  gunichar character = g_utf8_get_char_validated(text.data(), static_cast<gssize>(text.size()));
  constexpr gunichar lastCodePoint = 0x10FFFF;
  if (character == 0 || character > lastCodePoint) return {};

  const bool isUpper = g_unichar_isupper(character);
  if (isUpper) character = g_unichar_tolower(character);
  std::string key = keysymName(character);
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
