// Writes pretty-printed JSON: two blanks of indentation a level, "key" : value, an empty line in an
// empty array, slashes escaped, no line feed at the end. Whoever writes an object gives its keys in
// their order.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace quillmar {

class JsonWriter {
 public:
  /// A text that gets longer than estimated is copied as it grows.
  explicit JsonWriter(std::size_t estimatedSize);

  void beginObject() { begin('{'); }
  void endObject() { end('}'); }
  void beginArray() { begin('['); }
  void endArray();

  /// Comes before each value of an array.
  void element() { startLine(0); }

  /// Comes before each value of an object. Precondition: no character of the key needs an escape.
  template <std::size_t size>
  void key(const char (&key)[size]);

  void value(bool value);
  void value(std::int64_t value);
  void value(std::uint64_t value);
  /// Precondition: valid UTF-8.
  void value(std::string_view text);

  /// The text. Nothing may be written any more.
  std::string take();

 private:
  void begin(char bracket);
  void end(char bracket);
  template <class Number>
  void number(Number value);

  void startLine(std::size_t room);
  void reserve(std::size_t size);
  void grow(std::size_t size);

  std::string text_;
  /// How much of `text_` is written.
  std::size_t size_ = 0;
  std::size_t depth_ = 0;
  /// Nothing has been written into the innermost object or array.
  bool isEmpty_ = true;
};

// What is written for every field of a document is inline: with sizes that the compiler knows, a
// key is a few moves.

/// Makes room for that many bytes more.
inline void JsonWriter::reserve(std::size_t size) {
  if (text_.size() - size_ < size) grow(size);
}

/// Begins the line of the next key, element or bracket, after a comma when one of them came before.
/// Leaves room for that many bytes more.
inline void JsonWriter::startLine(std::size_t room) {
  constexpr std::size_t blanksAtOnce = 16;
  const std::size_t indentation = 2 * depth_;
  reserve(2 + indentation + blanksAtOnce + room);
  char* next = text_.data() + size_;
  if (!isEmpty_) *next++ = ',';
  *next++ = '\n';
  for (std::size_t i = 0; i < indentation; i += blanksAtOnce) {
    std::memset(next + i, ' ', blanksAtOnce);
  }
  size_ = static_cast<std::size_t>(next - text_.data()) + indentation;
  isEmpty_ = false;
}

template <std::size_t size>
void JsonWriter::key(const char (&key)[size]) {
  constexpr std::size_t length = size - 1;
  constexpr std::string_view separator = "\" : ";
  startLine(1 + length + separator.size());
  char* const next = text_.data() + size_;
  *next = '"';
  std::memcpy(next + 1, key, length);
  std::memcpy(next + 1 + length, separator.data(), separator.size());
  size_ += 1 + length + separator.size();
}

inline void JsonWriter::value(bool value) {
  constexpr std::size_t longest = 5;
  reserve(longest);
  std::memcpy(text_.data() + size_, value ? "true " : "false", longest);
  size_ += value ? longest - 1 : longest;
}

}  // namespace quillmar
