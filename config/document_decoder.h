// Reads a document from its JSON form. Keys are matched exactly and unknown ones ignored; of
// duplicate keys the last wins; null counts as missing; a value of the wrong type, a number that is
// not an integer or does not fit, and nesting deeper than 1,024 are errors. It is all or nothing.

#pragma once

#include <functional>
#include <memory>
#include <string>

#include "config/quillmar_config.h"
#include "platform/result.h"
#include "platform/uuid.h"

namespace quillmar {

/// Decodes any number of documents; keeps its buffers from one to the next, so drop it when only
/// one is to come. One thread at a time.
class DocumentDecoder {
 public:
  /// `makeIdentifier` gives each folder and item without an id its own.
  explicit DocumentDecoder(std::function<std::string()> makeIdentifier = makeUuid);
  ~DocumentDecoder();
  DocumentDecoder(DocumentDecoder&&) noexcept;
  DocumentDecoder& operator=(DocumentDecoder&&) noexcept;

  /// Decodes UTF-8 JSON. A string whose capacity exceeds its size by 64 bytes or more, as
  /// FileSystem::read() gives them, is parsed without a copy. The error says what is wrong, where
  /// ("categories[3].items[0].shortcut.keyCode", or line and column of a syntax error, counted from
  /// 1, columns in characters), what was expected and what stands there. Time and memory are linear
  /// in the size of the input, whatever it holds.
  Result<QuillmarConfig> decode(const std::string& json);

 private:
  struct Parser;
  std::unique_ptr<Parser> parser_;
  std::function<std::string()> makeIdentifier_;
};

/// Decodes one document with a decoder of its own.
Result<QuillmarConfig> decodeDocument(const std::string& json,
                                      std::function<std::string()> makeIdentifier = makeUuid);

}  // namespace quillmar
