#include "config/json_place.h"

#include <algorithm>
#include <cstdint>

#include <unicode/utf8.h>

#include "platform/text.h"

namespace quillmar {
namespace {

constexpr std::size_t longestExcerpt = 40;
constexpr std::string_view blanks = " \t\n\r";

std::size_t afterBlanks(std::string_view json, std::size_t offset) {
  return json.find_first_not_of(blanks, offset);
}

/// The end of the string whose opening quote is at `offset`.
std::size_t afterString(std::string_view json, std::size_t offset) {
  ++offset;
  while (json[offset] != '"') offset += json[offset] == '\\' ? 2 : 1;
  return offset + 1;
}

/// The end of the value that begins at `offset`.
std::size_t afterValue(std::string_view json, std::size_t offset) {
  const bool isScalar = std::string_view("\"{[").find(json[offset]) == std::string_view::npos;
  if (isScalar) return std::min(json.find_first_of(" \t\n\r,]}", offset), json.size());

  std::size_t depth = 0;
  do {
    const char c = json[offset];
    if (c == '"') {
      offset = afterString(json, offset);
      continue;
    }
    if (c == '{' || c == '[') ++depth;
    if (c == '}' || c == ']') --depth;
    ++offset;
  } while (depth > 0);
  return offset;
}

/// The offset of the child's value in the object or array at `offset`.
std::size_t childAt(std::string_view json, std::size_t offset, std::size_t ordinal) {
  const bool isObject = json[offset] == '{';
  for (std::size_t i = 0;; ++i) {
    offset = afterBlanks(json, offset + 1);  // past the bracket, or the comma before the child
    if (isObject) {
      const std::size_t colon = afterBlanks(json, afterString(json, offset));
      offset = afterBlanks(json, colon + 1);
    }
    if (i == ordinal) return offset;
    offset = afterBlanks(json, afterValue(json, offset));
  }
}

}  // namespace

TextPosition positionAt(std::string_view text, std::size_t offset) {
  const std::string_view before = text.substr(0, offset);
  const std::size_t lineFeed = before.rfind('\n');
  const std::string_view line =
      lineFeed == std::string_view::npos ? before : before.substr(lineFeed + 1);
  const auto isFirstByte = [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; };
  return {.line = 1 + static_cast<std::size_t>(std::ranges::count(before, '\n')),
          .column = 1 + static_cast<std::size_t>(std::ranges::count_if(line, isFirstByte))};
}

std::string description(TextPosition position) {
  return "line " + std::to_string(position.line) + ", column " + std::to_string(position.column);
}

std::string excerpt(std::string_view text) {
  // A character has at most four bytes, so the rest is not needed.
  const std::string_view head = text.substr(0, 4 * longestExcerpt + 4);
  const auto length = static_cast<std::int32_t>(head.size());
  std::int32_t end = 0;
  for (std::size_t count = 0; end < length && count < longestExcerpt; ++count) {
    U8_FWD_1(head.data(), end, length);
  }
  return text::escapingControlCharacters(head.substr(0, end)) + (end < length ? "…" : "");
}

std::string quotedExcerpt(std::string_view text) {
  return '"' + excerpt(text) + '"';
}

std::string_view valueAt(std::string_view json, std::span<const std::size_t> ordinals) {
  std::size_t offset = afterBlanks(json, 0);
  for (const std::size_t ordinal : ordinals) offset = childAt(json, offset, ordinal);
  return json.substr(offset, afterValue(json, offset) - offset);
}

}  // namespace quillmar
