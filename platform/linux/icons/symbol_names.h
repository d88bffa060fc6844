// Symbols by the names that documents use ("bolt.fill", "doc.on.clipboard") as icons of the set
// that ships with the application ("lightning-fill", "clipboard").

#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace quillmar {

/// Names of icons that could show the symbol, the best first; not all of them exist. Irregular
/// names are in a table. Others follow a rule: dots become hyphens, and variants that the set lacks
/// are dropped ("bolt.circle.fill" may be "lightning-fill"). Empty for a text that is not a symbol
/// name, for example because it is too long for a file name.
std::vector<std::string> iconNamesForSymbol(std::string_view symbol);

/// The names of the symbols to offer for these icons of the set, sorted and without duplicates: the
/// names of the table, the icons' own names with dots for hyphens, and both with ".fill" where the
/// icon also has a solid form, although the outlined one is shown for it.
std::vector<std::string> symbolNamesForIcons(std::vector<std::string> icons);

}  // namespace quillmar
