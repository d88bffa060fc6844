#include "config/json_syntax_error.h"

#include <bitset>
#include <cstdint>

#include <simdjson.h>
#include <unicode/utf8.h>

#include "config/json_place.h"

namespace quillmar {
namespace {

constexpr std::string_view byteOrderMark = "\xEF\xBB\xBF";

bool isDigit(char c) {
  return c >= '0' && c <= '9';
}

bool isHexDigit(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F');
}

/// Characters of a word: a name, a number, or a misspelt one.
bool isWordCharacter(char c) {
  return isDigit(c) || (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == '+' ||
         c == '-' || c == '.';
}

bool isHighSurrogate(unsigned unit) {
  return unit >= 0xD800 && unit < 0xDC00;
}
bool isLowSurrogate(unsigned unit) {
  return unit >= 0xDC00 && unit < 0xE000;
}

/// Scans one text once. Functions that consume input return false after an error.
class SyntaxScanner {
 public:
  SyntaxScanner(std::string_view json, const NumberHandler& oversizedNumber)
      : json_(json), oversizedNumber_(oversizedNumber) {}

  std::optional<Error> scan() {
    while (step()) {
    }
    return std::move(error_);
  }

 private:
  enum class Expected { value, valueOrEnd, key, keyOrEnd, colon, commaOrEnd, endOfDocument };

  bool atEnd() const { return offset_ == json_.size(); }
  bool at(char c) const { return !atEnd() && json_[offset_] == c; }
  bool inObject() const { return isObject_[depth_ - 1]; }

  bool step();
  bool takeValue();
  bool open();
  bool close();
  bool valueTaken();
  bool takeString();
  bool takeEscape();
  bool takeUnicodeEscape();
  std::optional<unsigned> unicodeEscapeAt(std::size_t offset) const;
  bool takeCharacter();
  bool takeNumber();
  bool takeName();
  bool isInRange(std::string_view number);

  std::string_view word() const;
  std::string found() const;
  bool fail(std::string_view expected) { return fail(expected, found()); }
  bool fail(std::string_view expected, const std::string& found);

  std::string_view json_;
  const NumberHandler& oversizedNumber_;
  std::size_t offset_ = 0;
  Expected expected_ = Expected::value;
  /// One element per open container, outermost first.
  std::bitset<maximumJsonDepth> isObject_;
  std::size_t depth_ = 0;
  simdjson::dom::parser numberParser_;
  std::optional<Error> error_;
};

/// Consumes one token. Returns false at the end of the document and after an error.
bool SyntaxScanner::step() {
  offset_ = std::min(json_.find_first_not_of(" \t\n\r", offset_), json_.size());
  switch (expected_) {
    case Expected::valueOrEnd:
      return at(']') ? close() : takeValue();
    case Expected::value:
      return takeValue();
    case Expected::keyOrEnd:
      if (at('}')) return close();
      [[fallthrough]];
    case Expected::key:
      if (!at('"')) {
        return fail(expected_ == Expected::key ? "a key in double quotes"
                                               : "a key in double quotes or \"}\"");
      }
      expected_ = Expected::colon;
      return takeString();
    case Expected::colon:
      if (!at(':')) return fail("a colon after the key");
      ++offset_;
      expected_ = Expected::value;
      return true;
    case Expected::commaOrEnd:
      if (at(inObject() ? '}' : ']')) return close();
      if (!at(',')) return fail(inObject() ? "a comma or \"}\"" : "a comma or \"]\"");
      ++offset_;
      expected_ = inObject() ? Expected::key : Expected::value;
      return true;
    case Expected::endOfDocument:
      return !atEnd() && fail("the end of the document");
  }
  return false;
}

bool SyntaxScanner::takeValue() {
  if (atEnd()) return fail("a value");
  const char c = json_[offset_];
  if (c == '{' || c == '[') return open();
  if (c == '"') return takeString() && valueTaken();
  if (c == '-' || isDigit(c)) return takeNumber() && valueTaken();
  return takeName() && valueTaken();
}

bool SyntaxScanner::open() {
  if (depth_ == maximumJsonDepth) return fail("at most 1,024 levels of nesting", "one more");
  const bool isObject = at('{');
  isObject_[depth_++] = isObject;
  ++offset_;
  expected_ = isObject ? Expected::keyOrEnd : Expected::valueOrEnd;
  return true;
}

bool SyntaxScanner::close() {
  --depth_;
  ++offset_;
  return valueTaken();
}

bool SyntaxScanner::valueTaken() {
  expected_ = depth_ == 0 ? Expected::endOfDocument : Expected::commaOrEnd;
  return true;
}

bool SyntaxScanner::takeString() {
  const std::size_t start = offset_++;
  while (!at('"')) {
    if (atEnd()) {
      return fail("a double quote to end the string that starts at " +
                  description(positionAt(json_, start)));
    }
    if (!(at('\\') ? takeEscape() : takeCharacter())) return false;
  }
  ++offset_;
  return true;
}

bool SyntaxScanner::takeEscape() {
  const std::size_t letter = offset_ + 1;
  if (letter < json_.size() && json_[letter] == 'u') return takeUnicodeEscape();
  if (letter < json_.size() &&
      std::string_view("\"\\/bfnrt").find(json_[letter]) != std::string_view::npos) {
    offset_ += 2;
    return true;
  }
  offset_ = letter;
  return fail("one of the characters \" \\ / b f n r t u after the backslash");
}

bool SyntaxScanner::takeUnicodeEscape() {
  const std::optional<unsigned> unit = unicodeEscapeAt(offset_);
  if (!unit) {
    offset_ += 2;
    return fail("four hexadecimal digits after \"\\u\"");
  }
  if (isLowSurrogate(*unit)) {
    return fail("the first half of a surrogate pair before the second one",
                quotedExcerpt(json_.substr(offset_, 6)));
  }
  offset_ += 6;
  if (!isHighSurrogate(*unit)) return true;
  const std::optional<unsigned> second = unicodeEscapeAt(offset_);
  if (!second || !isLowSurrogate(*second)) {
    return fail("the second half of a surrogate pair, \"\\udc00\" to \"\\udfff\"");
  }
  offset_ += 6;
  return true;
}

/// The code unit of a complete `\uXXXX` at the offset.
std::optional<unsigned> SyntaxScanner::unicodeEscapeAt(std::size_t offset) const {
  const std::string_view escape = json_.substr(offset, 6);
  if (escape.size() < 6 || !escape.starts_with("\\u")) return std::nullopt;
  unsigned unit = 0;
  for (const char c : escape.substr(2)) {
    if (!isHexDigit(c)) return std::nullopt;
    unit = unit * 16 + static_cast<unsigned>(isDigit(c) ? c - '0' : (c | 0x20) - 'a' + 10);
  }
  return unit;
}

/// Consumes an unescaped character of a string.
bool SyntaxScanner::takeCharacter() {
  const std::string_view character = json_.substr(offset_, 4);
  std::int32_t length = 0;
  UChar32 codePoint = 0;
  U8_NEXT(character.data(), length, static_cast<std::int32_t>(character.size()), codePoint);
  if (codePoint < 0) return fail("UTF-8");
  if (codePoint < 0x20) {
    return fail(
        "a control character in a string to be written as " + excerpt(json_.substr(offset_, 1)),
        "the raw character");
  }
  offset_ += static_cast<std::size_t>(length);
  return true;
}

bool SyntaxScanner::takeNumber() {
  const std::string_view text = word();
  std::size_t i = text.front() == '-' ? 1 : 0;
  const auto takeDigits = [&] {
    const std::size_t start = i;
    while (i < text.size() && isDigit(text[i])) ++i;
    return i - start;
  };

  const std::size_t integerStart = i;
  const std::size_t integerDigits = takeDigits();
  bool isWellFormed = integerDigits == 1 || (integerDigits > 1 && text[integerStart] != '0');
  if (i < text.size() && text[i] == '.') {
    ++i;
    isWellFormed = isWellFormed && takeDigits() > 0;
  }
  if (i < text.size() && (text[i] == 'e' || text[i] == 'E')) {
    ++i;
    if (i < text.size() && (text[i] == '+' || text[i] == '-')) ++i;
    isWellFormed = isWellFormed && takeDigits() > 0;
  }
  if (!isWellFormed || i < text.size()) return fail("a valid JSON number");
  if (oversizedNumber_ && !isInRange(text)) oversizedNumber_(text);
  offset_ += text.size();
  return true;
}

/// Whether the parser accepts the well-formed number. The parser is only tried for numbers with an
/// exponent or many digits; all others fit.
bool SyntaxScanner::isInRange(std::string_view number) {
  constexpr std::size_t digitsThatFit = 18;
  if (number.size() <= digitsThatFit && number.find_first_of("eE") == std::string_view::npos) {
    return true;
  }
  return numberParser_.parse(number.data(), number.size()).error() == simdjson::SUCCESS;
}

bool SyntaxScanner::takeName() {
  const std::string_view text = word();
  if (text != "true" && text != "false" && text != "null") return fail("a value");
  offset_ += text.size();
  return true;
}

std::string_view SyntaxScanner::word() const {
  std::size_t end = offset_;
  while (end < json_.size() && isWordCharacter(json_[end])) ++end;
  return json_.substr(offset_, end - offset_);
}

/// Describes the input at the offset.
std::string SyntaxScanner::found() const {
  if (atEnd()) return "the end of the document";
  const std::string_view rest = json_.substr(offset_, 4);
  if (offset_ == 0 && rest.starts_with(byteOrderMark)) return "a byte-order mark";
  if (rest.front() == '"') return "a double quote";
  if (const std::string_view text = word(); !text.empty()) return quotedExcerpt(text);

  std::int32_t length = 0;
  UChar32 codePoint = 0;
  U8_NEXT(rest.data(), length, static_cast<std::int32_t>(rest.size()), codePoint);
  if (codePoint >= 0) return quotedExcerpt(rest.substr(0, static_cast<std::size_t>(length)));
  constexpr std::string_view digits = "0123456789ABCDEF";
  const auto byte = static_cast<unsigned char>(rest.front());
  return std::string("the byte 0x") + digits[byte >> 4] + digits[byte & 0xF];
}

bool SyntaxScanner::fail(std::string_view expected, const std::string& found) {
  const TextPosition position = positionAt(json_, offset_);
  error_ = Error{"Line " + std::to_string(position.line) + ", column " +
                 std::to_string(position.column) + ": expected " + std::string(expected) +
                 ", found " + found + "."};
  return false;
}

}  // namespace

std::optional<Error> findJsonSyntaxError(std::string_view json,
                                         const NumberHandler& oversizedNumber) {
  return SyntaxScanner(json, oversizedNumber).scan();
}

}  // namespace quillmar
