// Symbols by the names that documents use ("bolt.fill", "doc.on.clipboard") as icons of the set
// that ships with the application ("lightning-fill", "clipboard").

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillmar {

/// Names of icons that could stand for the symbol, the best first; not all of them exist. A table
/// knows the odd names, a rule the others: dots become hyphens, and variants that the set lacks are
/// dropped ("bolt.circle.fill" may be "lightning-fill"). Empty for what is no symbol name, such as
/// a text that is longer than a file name can be.
std::vector<std::string> iconNamesForSymbol(std::string_view symbol);

}  // namespace quillmar
