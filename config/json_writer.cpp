#include "config/json_writer.h"

#include <algorithm>
#include <bit>
#include <charconv>
#include <cstring>

namespace quillmar {
namespace {

using Word = std::uint64_t;

constexpr Word everyByte(unsigned char byte) {
  return ~Word{0} / 0xFF * byte;
}

Word load(const char* bytes) {
  Word word = 0;
  std::memcpy(&word, bytes, sizeof word);
  // The first byte of the text is the least significant byte of the word.
  if constexpr (std::endian::native == std::endian::big) word = __builtin_bswap64(word);
  return word;
}

/// The number of leading bytes of the word that need no escape, that is, up to a control character,
/// quote, backslash or slash.
std::size_t plainBytes(Word word) {
  // The subtraction sets the top bit of a byte that is less. Its borrow can corrupt the bytes
  // above, but never hides the first match.
  const auto less = [](Word bytes, unsigned char limit) {
    return (bytes - everyByte(limit)) & ~bytes;
  };
  const auto equal = [&](unsigned char byte) { return less(word ^ everyByte(byte), 1); };
  const Word special = (less(word, 0x20) | equal('"') | equal('\\') | equal('/')) & everyByte(0x80);
  return static_cast<std::size_t>(std::countr_zero(special)) / 8;
}

constexpr bool isPlain(char c) {
  return static_cast<unsigned char>(c) >= 0x20 && c != '"' && c != '\\' && c != '/';
}

constexpr std::size_t longestEscape = 6;

/// Writes the escape of a character that needs one; returns the end of the output.
char* writeEscape(char* target, char c) {
  *target++ = '\\';
  switch (c) {
    case '"':
    case '\\':
    case '/':
      *target++ = c;
      return target;
    case '\b':
      *target++ = 'b';
      return target;
    case '\f':
      *target++ = 'f';
      return target;
    case '\n':
      *target++ = 'n';
      return target;
    case '\r':
      *target++ = 'r';
      return target;
    case '\t':
      *target++ = 't';
      return target;
    default:
      break;
  }
  constexpr std::string_view digits = "0123456789abcdef";
  for (const char digit : {'u', '0', '0', digits[c >> 4], digits[c & 0xF]}) *target++ = digit;
  return target;
}

/// Writes the characters, escaped as needed; returns the end of the output. May write up to one
/// word beyond it.
char* writeEscaped(char* target, std::string_view text) {
  const char* source = text.data();
  const char* const end = source + text.size();
  while (end - source >= static_cast<std::ptrdiff_t>(sizeof(Word))) {
    const std::size_t plain = plainBytes(load(source));
    std::memcpy(target, source, sizeof(Word));
    source += plain;
    target += plain;
    if (plain < sizeof(Word)) target = writeEscape(target, *source++);
  }
  for (; source != end; ++source) {
    if (isPlain(*source)) {
      *target++ = *source;
    } else {
      target = writeEscape(target, *source);
    }
  }
  return target;
}

}  // namespace

JsonWriter::JsonWriter(std::size_t estimatedSize) : text_(estimatedSize, '\0') {}

void JsonWriter::value(std::int64_t value) {
  number(value);
}
void JsonWriter::value(std::uint64_t value) {
  number(value);
}

template <class Number>
void JsonWriter::number(Number value) {
  constexpr std::size_t longestNumber = 20;
  reserve(longestNumber);
  char* const next = text_.data() + size_;
  size_ += static_cast<std::size_t>(std::to_chars(next, next + longestNumber, value).ptr - next);
}

void JsonWriter::value(std::string_view text) {
  // In chunks, to bound the memory reserved for the case that every byte needs an escape.
  constexpr std::size_t longestPiece = 4096;
  reserve(1);
  text_[size_++] = '"';
  while (!text.empty()) {
    const std::string_view piece = text.substr(0, longestPiece);
    reserve(piece.size() * longestEscape + sizeof(Word));
    size_ = static_cast<std::size_t>(writeEscaped(text_.data() + size_, piece) - text_.data());
    text.remove_prefix(piece.size());
  }
  reserve(1);
  text_[size_++] = '"';
}

void JsonWriter::begin(char bracket) {
  reserve(1);
  text_[size_++] = bracket;
  ++depth_;
  isEmpty_ = true;
}

void JsonWriter::endArray() {
  if (isEmpty_) {
    reserve(1);
    text_[size_++] = '\n';
  }
  end(']');
}

void JsonWriter::end(char bracket) {
  --depth_;
  isEmpty_ = true;  // no comma before the bracket
  startLine(1);
  text_[size_++] = bracket;
}

void JsonWriter::grow(std::size_t size) {
  text_.resize(2 * text_.size() + size);
}

std::string JsonWriter::take() {
  text_.resize(size_);
  return std::move(text_);
}

}  // namespace quillmar
