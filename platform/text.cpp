#include "platform/text.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>

#include <simdjson.h>
#include <unicode/ubrk.h>
#include <unicode/ucasemap.h>
#include <unicode/uchar.h>
#include <unicode/utext.h>
#include <unicode/utf8.h>

namespace quillmar::text {
namespace {

constexpr std::string_view replacementCharacter = "\uFFFD";

// ICU counts bytes in 32 bits.
constexpr std::size_t maximumIcuBytes = std::numeric_limits<std::int32_t>::max();

struct CloseBreaks {
  void operator()(UBreakIterator* breaks) const { ubrk_close(breaks); }
};
struct CloseText {
  void operator()(UText* text) const { utext_close(text); }
};
struct CloseCaseMap {
  void operator()(UCaseMap* map) const { ucasemap_close(map); }
};

bool isAscii(std::string_view text) {
  return std::ranges::all_of(text, [](char c) { return static_cast<signed char>(c) >= 0; });
}

bool isWhitespace(UChar32 character) {
  // The category tables are compiled into ICU, so this loads no data.
  return character == '\t' || u_charType(character) == U_SPACE_SEPARATOR;
}

bool isNewline(UChar32 character) {
  return (character >= 0x0A && character <= 0x0D) || character == 0x85 || character == 0x2028 ||
         character == 0x2029;
}

bool isWhitespaceOrNewline(UChar32 character) {
  return isWhitespace(character) || isNewline(character);
}

/// Decodes the first code point of a non-empty text; returns its length in bytes.
std::size_t firstCharacter(std::string_view text, UChar32& character) {
  const std::string_view head = text.substr(0, U8_MAX_LENGTH);
  std::int32_t length = 0;
  U8_NEXT(head.data(), length, static_cast<std::int32_t>(head.size()), character);
  return static_cast<std::size_t>(length);
}

/// Decodes the last code point of a non-empty text; returns its length in bytes.
std::size_t lastCharacter(std::string_view text, UChar32& character) {
  const std::string_view tail =
      text.substr(text.size() - std::min<std::size_t>(text.size(), U8_MAX_LENGTH));
  auto start = static_cast<std::int32_t>(tail.size());
  U8_PREV(tail.data(), 0, start, character);
  return tail.size() - static_cast<std::size_t>(start);
}

template <class Predicate>
std::string_view trim(std::string_view text, Predicate isTrimmed) {
  UChar32 character = 0;
  while (!text.empty()) {
    const std::size_t length = firstCharacter(text, character);
    if (!isTrimmed(character)) break;
    text.remove_prefix(length);
  }
  while (!text.empty()) {
    const std::size_t length = lastCharacter(text, character);
    if (!isTrimmed(character)) break;
    text.remove_suffix(length);
  }
  return text;
}

struct OpenedBreaks {
  std::unique_ptr<UText, CloseText> source;
  std::unique_ptr<UBreakIterator, CloseBreaks> breaks;
};

/// The character boundaries of a text of at most maximumIcuBytes. `breaks` is null if ICU's data is
/// missing.
OpenedBreaks characterBreaks(std::string_view text) {
  UErrorCode status = U_ZERO_ERROR;
  OpenedBreaks opened;
  opened.source.reset(
      utext_openUTF8(nullptr, text.data(), static_cast<std::int64_t>(text.size()), &status));
  opened.breaks.reset(ubrk_open(UBRK_CHARACTER, "", nullptr, 0, &status));
  ubrk_setUText(opened.breaks.get(), opened.source.get(), &status);
  if (U_FAILURE(status)) opened.breaks.reset();
  return opened;
}

/// Approximates lastCharacters() by code points, for when ICU's data is missing.
std::string_view lastCodePoints(std::string_view text, std::size_t count) {
  std::string_view before = text;
  UChar32 character = 0;
  for (; count > 0 && !before.empty(); --count) {
    before.remove_suffix(lastCharacter(before, character));
  }
  return text.substr(before.size());
}

bool needsEscape(UChar32 character) {
  const int type = u_charType(character);
  return type == U_CONTROL_CHAR || type == U_LINE_SEPARATOR || type == U_PARAGRAPH_SEPARATOR ||
         u_hasBinaryProperty(character, UCHAR_BIDI_CONTROL) != 0;
}

/// The JSON escape of the character. Precondition: it is in the basic multilingual plane.
std::string jsonEscape(UChar32 character) {
  switch (character) {
    case '\b':
      return "\\b";
    case '\f':
      return "\\f";
    case '\n':
      return "\\n";
    case '\r':
      return "\\r";
    case '\t':
      return "\\t";
    default:
      break;
  }
  constexpr std::string_view digits = "0123456789abcdef";
  std::string text = "\\u";
  for (int shift = 12; shift >= 0; shift -= 4) text += digits[(character >> shift) & 0xF];
  return text;
}

/// One of ICU's conversions between lower and upper case.
using CaseMapping = std::int32_t(const UCaseMap* map, char* destination, std::int32_t capacity,
                                 const char* source, std::int32_t length, UErrorCode* status);

/// Converts the text with ICU, or, if it is ASCII, character by character without ICU's data.
template <class AsciiMapping>
std::string mapped(std::string_view text, CaseMapping* mapping, AsciiMapping asciiMapping) {
  std::string result(text);
  if (isAscii(text) || text.size() > maximumIcuBytes) {
    std::ranges::transform(result, result.begin(), asciiMapping);
    return result;
  }

  UErrorCode status = U_ZERO_ERROR;
  const std::unique_ptr<UCaseMap, CloseCaseMap> caseMap(ucasemap_open("", 0, &status));
  const auto map = [&] {
    status = U_ZERO_ERROR;
    return mapping(caseMap.get(), result.data(), static_cast<std::int32_t>(result.size()),
                   text.data(), static_cast<std::int32_t>(text.size()), &status);
  };
  if (U_FAILURE(status)) return result;
  std::int32_t length = map();
  if (status == U_BUFFER_OVERFLOW_ERROR) {
    result.resize(static_cast<std::size_t>(length));
    length = map();
  }
  if (U_FAILURE(status)) return std::string(text);
  result.resize(static_cast<std::size_t>(length));
  return result;
}

}  // namespace

bool isValidUtf8(std::string_view bytes) {
  return simdjson::validate_utf8(bytes.data(), bytes.size());
}

std::string_view trimWhitespace(std::string_view text) {
  return trim(text, isWhitespace);
}

std::string_view trimWhitespaceAndNewlines(std::string_view text) {
  return trim(text, isWhitespaceOrNewline);
}

bool containsNewline(std::string_view text) {
  if (text.find_first_of("\n\v\f\r") != std::string_view::npos) return true;
  for (const std::string_view newline : {"\u0085", "\u2028", "\u2029"}) {
    if (text.find(newline) != std::string_view::npos) return true;
  }
  return false;
}

std::string onOneLine(std::string_view text) {
  if (!containsNewline(text)) return std::string(text);
  std::string line;
  while (!text.empty()) {
    UChar32 character = 0;
    std::size_t length = firstCharacter(text, character);
    if (text.starts_with("\r\n")) length = 2;
    if (isNewline(character)) {
      line += ' ';
    } else {
      line += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return line;
}

std::size_t longestGap(std::string_view text) {
  std::size_t longest = 0;
  std::size_t run = 0;
  while (!text.empty()) {
    UChar32 character = 0;
    text.remove_prefix(firstCharacter(text, character));
    if (isWhitespaceOrNewline(character)) {
      ++run;
      continue;
    }
    longest = std::max(longest, run);
    run = 0;
  }
  return longest;
}

std::vector<std::string> split(std::string_view text, char separator) {
  std::vector<std::string> parts;
  while (!text.empty()) {
    const std::string_view part = text.substr(0, text.find(separator));
    if (!part.empty()) parts.emplace_back(part);
    text.remove_prefix(std::min(text.size(), part.size() + 1));
  }
  return parts;
}

std::string_view lastCharacters(std::string_view text, std::size_t count) {
  if (count == 0) return {};
  if (text.size() <= count) return text;
  // Between two ASCII characters is a boundary, except in CR LF.
  const std::string_view asciiTail = text.substr(text.size() - count - 1);
  if (isAscii(asciiTail) && asciiTail.find('\r') == std::string_view::npos) {
    return asciiTail.substr(1);
  }

  const std::string_view tail = text.substr(text.size() - std::min(text.size(), maximumIcuBytes));
  const OpenedBreaks opened = characterBreaks(tail);
  UBreakIterator* const breaks = opened.breaks.get();
  if (breaks == nullptr) return lastCodePoints(tail, count);

  std::int32_t start = ubrk_last(breaks);
  for (; count > 0 && start > 0; --count) start = ubrk_previous(breaks);
  return tail.substr(static_cast<std::size_t>(std::max(start, 0)));
}

std::string_view firstCharacters(std::string_view text, std::size_t count,
                                 std::size_t maximumBytes) {
  const std::size_t sureEnd = std::min(count, maximumBytes);
  if (sureEnd == 0) return {};
  if (text.size() <= sureEnd) return text;
  // Between two ASCII characters is a boundary, except in CR LF.
  const std::string_view asciiHead = text.substr(0, sureEnd + 1);
  if (isAscii(asciiHead) && asciiHead.find('\r') == std::string_view::npos) {
    return asciiHead.substr(0, sureEnd);
  }

  // The code point after the limit shows whether a boundary precedes it.
  const std::size_t looked =
      std::min(maximumBytes, maximumIcuBytes - U8_MAX_LENGTH) + U8_MAX_LENGTH;
  const std::string_view head = firstBytes(text, looked);
  const std::string_view fitting = firstBytes(text, maximumBytes);
  const OpenedBreaks opened = characterBreaks(head);
  if (!opened.breaks) return firstBytes(text, sureEnd);
  std::size_t end = 0;
  for (; count > 0; --count) {
    const std::int32_t next = ubrk_next(opened.breaks.get());
    if (next == UBRK_DONE || static_cast<std::size_t>(next) > fitting.size()) break;
    end = static_cast<std::size_t>(next);
  }
  return end > 0 ? text.substr(0, end) : fitting;
}

char32_t firstCodePoint(std::string_view text) {
  UChar32 character = 0;
  if (!text.empty()) firstCharacter(text, character);
  return character > 0 ? static_cast<char32_t>(character) : 0;
}

std::string_view firstBytes(std::string_view text, std::size_t count) {
  if (text.size() <= count) return text;
  std::size_t end = count;
  while (end > 0 && count - end < U8_MAX_LENGTH && U8_IS_TRAIL(text[end])) --end;
  return text.substr(0, end);
}

std::string_view lastBytes(std::string_view text, std::size_t count) {
  if (text.size() <= count) return text;
  text.remove_prefix(text.size() - count);
  while (!text.empty() && U8_IS_TRAIL(text.front())) text.remove_prefix(1);
  return text;
}

std::string lowercased(std::string_view text) {
  return mapped(text, ucasemap_utf8ToLower, [](char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
  });
}

std::string uppercased(std::string_view text) {
  return mapped(text, ucasemap_utf8ToUpper, [](char c) {
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - ('a' - 'A')) : c;
  });
}

std::string escapingControlCharacters(std::string_view text) {
  std::string escaped;
  while (!text.empty()) {
    UChar32 character = 0;
    const std::size_t length = firstCharacter(text, character);
    if (character < 0) {
      escaped += replacementCharacter;
    } else if (needsEscape(character)) {
      escaped += jsonEscape(character);
    } else {
      escaped += text.substr(0, length);
    }
    text.remove_prefix(length);
  }
  return escaped;
}

std::string replacingInvalidCharacters(std::string_view text) {
  std::string sendable;
  while (!text.empty()) {
    UChar32 character = 0;
    const std::size_t length = firstCharacter(text, character);
    sendable += character > 0 ? text.substr(0, length) : replacementCharacter;
    text.remove_prefix(length);
  }
  return sendable;
}

}  // namespace quillmar::text
