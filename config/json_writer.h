// Writes pretty-printed JSON: two blanks of indentation a level, "key" : value, an empty line in an
// empty array, slashes escaped, no line feed at the end. Whoever writes an object gives its keys in
// their order.

#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace quillmar {

class JsonWriter {
 public:
  /// A text that gets longer than estimated is copied as it grows.
  explicit JsonWriter(std::size_t estimatedSize);

  void beginObject() { begin('{'); }
  void endObject();
  void beginArray() { begin('['); }
  void endArray();

  /// Comes before each value of an array.
  void element() { startLine(); }

  /// Comes before each value of an object. Precondition: no character of the key needs an escape.
  void key(std::string_view key);

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
  void startLine();
  template <class Number>
  void number(Number value);

  void reserve(std::size_t size);

  std::string text_;
  /// How much of `text_` is written.
  std::size_t size_ = 0;
  std::size_t depth_ = 0;
  /// Nothing has been written into the innermost object or array.
  bool isEmpty_ = true;
};

}  // namespace quillmar
