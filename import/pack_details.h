// Everything that a pack contains, and where a merge adds it, as text. Any thread.

#pragma once

#include <string>

#include "config/quillmar_config.h"

namespace quillmar {

/// The name and the description of the pack, then a paragraph for each folder and item, with all
/// fields and the whole command. Names and other short texts are on one line each, with invisible
/// characters made visible. Lines of descriptions and commands begin with "│", so that they cannot
/// imitate the other lines.
std::string packDetails(const QuillmarConfig& current, const QuillmarConfig& pack);

}  // namespace quillmar
