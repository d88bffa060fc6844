// Writes a document in its one JSON form: keys in ascending order, two blanks of indentation a
// level, "key" : value, slashes escaped, absent optional fields left out, no line feed at the end.

#pragma once

#include <string>

#include "config/quillmar_config.h"

namespace quillmar {

/// The bytes of the document. Equal documents give equal bytes. Precondition: every string in it is
/// valid UTF-8, which every decoded one is.
std::string encodeDocument(const QuillmarConfig& config);

}  // namespace quillmar
