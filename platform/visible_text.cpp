#include "platform/visible_text.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstdio>

#include <unicode/uchar.h>
#include <unicode/utf8.h>

namespace quillmar::text {

namespace {

/// Drawn blank, although not classed as spaces: the blank Braille pattern and the object
/// replacement character.
constexpr std::array<UChar32, 2> blanks = {0x2800, 0xFFFC};

constexpr UChar32 endOfAscii = 0x80;
constexpr UChar32 nonJoiner = 0x200C;
constexpr UChar32 joiner = 0x200D;
constexpr UChar32 emojiSelector = 0xFE0F;

bool isJoiner(UChar32 character) {
  return character == joiner || character == nonJoiner;
}

bool isSelector(UChar32 character) {
  return u_hasBinaryProperty(character, UCHAR_VARIATION_SELECTOR);
}

/// True if `character` changes how the preceding `before` is drawn.
bool modifies(UChar32 character, UChar32 before) {
  if (isJoiner(character)) return before >= endOfAscii && !isJoiner(before);
  // A digit with U+FE0F forms a keycap emoji.
  const bool isKeycap = character == emojiSelector && u_hasBinaryProperty(before, UCHAR_EMOJI);
  return (before >= endOfAscii || isKeycap) && !isJoiner(before) && !isSelector(before);
}

bool isUnseen(UChar32 character, UChar32 before) {
  if (isJoiner(character) || isSelector(character)) return !modifies(character, before);
  switch (u_charType(character)) {
    case U_CONTROL_CHAR:
      return character != '\n' && character != '\t';
    case U_FORMAT_CHAR:
      // Number signs of some scripts are format characters, but visible.
      return !u_hasBinaryProperty(character, UCHAR_PREPENDED_CONCATENATION_MARK);
    case U_LINE_SEPARATOR:
    case U_PARAGRAPH_SEPARATOR:
      return true;
    default:
      return u_hasBinaryProperty(character, UCHAR_DEFAULT_IGNORABLE_CODE_POINT) ||
             u_hasBinaryProperty(character, UCHAR_NONCHARACTER_CODE_POINT) ||
             std::ranges::find(blanks, character) != blanks.end();
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

/// Such as "‹U+202E›".
std::string markOf(UChar32 character) {
  std::array<char, 12> number{};
  std::snprintf(number.data(), number.size(), "U+%04X", static_cast<unsigned>(character));
  return std::string("‹") + number.data() + "›";
}

}  // namespace

std::string withVisibleCharacters(std::string_view text) {
  return VisibleText(text).text();
}

bool hasInvisibleCharacters(std::string_view text) {
  bool found = false;
  forEachCharacter(text, [&](std::string_view, UChar32, bool isInvisible) {
    found = isInvisible;
    return !found;
  });
  return found;
}

VisibleText::VisibleText(std::string_view original) {
  text_.reserve(original.size());
  forEachCharacter(original, [this](std::string_view bytes, UChar32 character, bool isInvisible) {
    const std::size_t begin = text_.size();
    if (!isInvisible) {
      text_ += bytes;
    } else {
      text_ += markOf(character);
      marks_.push_back({.begin = begin, .end = text_.size(), .character = std::string(bytes)});
    }
    return true;
  });
}

std::string VisibleText::original(std::size_t begin, std::size_t end) const {
  std::string result;
  if (begin >= end) return result;
  auto mark = std::ranges::upper_bound(marks_, begin, {}, &Mark::end);
  for (; mark != marks_.end() && mark->begin < end; ++mark) {
    if (begin < mark->begin) result += text_.substr(begin, mark->begin - begin);
    result += mark->character;
    begin = mark->end;
  }
  if (begin < end) result += text_.substr(begin, end - begin);
  return result;
}

}  // namespace quillmar::text
