// Reads a document from its JSON form. Keys are matched exactly and unknown ones ignored; of
// duplicate keys the last wins; null counts as missing. Errors are a value of the wrong type, a
// number that is not an integer or does not fit, and nesting deeper than 1,024 levels; any of them
// fails the whole document.

#pragma once

#include <functional>
#include <string>

#include "config/quillmar_config.h"
#include "platform/result.h"
#include "platform/uuid.h"

namespace quillmar {

/// Decodes UTF-8 JSON. A string whose capacity exceeds its size by 64 bytes or more, as
/// FileSystem::read() returns it, is parsed without a copy. `makeIdentifier` creates an id for each
/// folder and item without one. The error names the place
/// ("categories[3].items[0].shortcut.keyCode", or line and column of a syntax error, counted from
/// 1, columns in characters), what was expected and what was found. Time and memory are linear in
/// the size of the input.
Result<QuillmarConfig> decodeDocument(
    const std::string& json, const std::function<std::string()>& makeIdentifier = makeUuid);

}  // namespace quillmar
