// The document that the benchmarks use. It is the same in every run.

#pragma once

#include <cstddef>

#include "config/quillmar_config.h"

namespace quillmar {

/// `folders` folders of `itemsPerFolder` items each. Commands are single lines of 20 to 90 bytes; a
/// tenth of the items has a shortcut, some have an icon or ask a question. 100 times 100 items make
/// a document of 5 to 6 MB.
QuillmarConfig makeSampleDocument(std::size_t folders = 100, std::size_t itemsPerFolder = 100);

}  // namespace quillmar
