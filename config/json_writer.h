// Writes pretty-printed JSON: two spaces of indentation per level, "key" : value, an empty line in
// an empty array, escaped slashes, no line feed at the end. Keys are written in the order of the
// calls.

#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

namespace quillmar {

class JsonWriter {
 public:
  /// A text longer than the estimate is reallocated as it grows.
  explicit JsonWriter(std::size_t estimatedSize);

  void beginObject() { begin('{'); }
  void endObject() { end('}'); }
  void beginArray() { begin('['); }
  void endArray();

  /// Call before each value of an array.
  void element() { startLine(0); }

  /// Call before each value of an object. Precondition: no character of the key needs an escape.
  template <std::size_t size>
  void key(const char (&key)[size]);

  void value(bool value);
  void value(std::int64_t value);
  void value(std::uint64_t value);
  /// Precondition: valid UTF-8.
  void value(std::string_view text);

  /// Returns the text. Must be the last call.
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
  /// Number of bytes of `text_` that are written.
  std::size_t size_ = 0;
  std::size_t depth_ = 0;
  /// True if nothing has been written into the innermost object or array.
  bool isEmpty_ = true;
};

// Functions that are called for every field of a document are inline: with sizes known at compile
// time, writing a key takes a few instructions.

/// Makes room for `size` more bytes.
inline void JsonWriter::reserve(std::size_t size) {
  if (text_.size() - size_ < size) grow(size);
}

/// Begins the line of the next key, element or bracket, after a comma if there was a previous one.
/// Reserves `room` more bytes.
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
