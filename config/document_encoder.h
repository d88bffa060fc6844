// Writes a document in canonical JSON: keys in ascending order, two spaces of indentation per
// level, "key" : value, escaped slashes, no absent optional fields, no line feed at the end.

#pragma once

#include <string>

#include "config/quillmar_config.h"

namespace quillmar {

/// Encodes the document. Equal documents give equal bytes. Precondition: all strings are valid
/// UTF-8; those of decoded documents are.
std::string encodeDocument(const QuillmarConfig& config);

}  // namespace quillmar
