#include "platform/visible_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace quillmar::text {

namespace {

/// Letters without a glyph: the Hangul fillers.
constexpr std::array<UChar32, 4> fillers = {0x115F, 0x1160, 0x3164, 0xFFA0};

constexpr UChar32 endOfAscii = 0x80;

bool isUnseen(UChar32 character, UChar32 before) {
  constexpr UChar32 nonJoiner = 0x200C;
  constexpr UChar32 joiner = 0x200D;
  switch (u_charType(character)) {
    case U_CONTROL_CHAR:
      return character != '\n' && character != '\t';
    case U_FORMAT_CHAR:
      if (character == joiner || character == nonJoiner) return before < endOfAscii;
      // Number signs of some scripts are format characters, but visible.
      return !u_hasBinaryProperty(character, UCHAR_PREPENDED_CONCATENATION_MARK);
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
      return true;
    default:
      return std::ranges::find(fillers, character) != fillers.end();
  }
}

/// Calls `see(bytes, character, isInvisible)` for each character until it returns false.
template <class See>
void forEachCharacter(std::string_view text, const See& see) {
  UChar32 before = 0;
  while (!text.empty()) {
    const std::string_view head = text.substr(0, U8_MAX_LENGTH);
    std::int32_t length = 0;
    UChar32 character = 0;
    U8_NEXT_OR_FFFD(head.data(), length, static_cast<std::int32_t>(head.size()), character);
    const std::string_view bytes = text.substr(0, static_cast<std::size_t>(length));
    if (!see(bytes, character, isUnseen(character, before))) return;
    before = character;
    text.remove_prefix(bytes.size());
  }
}

}  // namespace

std::string withVisibleCharacters(std::string_view text) {
  std::string visible;
  visible.reserve(text.size());
  forEachCharacter(text, [&](std::string_view bytes, UChar32 character, bool isInvisible) {
    if (isInvisible) {
      std::array<char, 12> number{};
      std::snprintf(number.data(), number.size(), "U+%04X", static_cast<unsigned>(character));
      visible.append("‹").append(number.data()).append("›");
    } else {
      visible += bytes;
    }
    return true;
  });
  return visible;
}

bool hasInvisibleCharacters(std::string_view text) {
  bool found = false;
  forEachCharacter(text, [&](std::string_view, UChar32, bool isInvisible) {
    found = isInvisible;
    return !found;
  });
  return found;
}

}  // namespace quillmar::text
