#include "platform/linux/icons/symbol_names.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <span>
#include <utility>

#include "platform/linux/icons/solid_icons.h"
#include "platform/linux/icons/symbol_name_table.h"

namespace quillmar {

namespace {

/// Parts of a name that say how a symbol is drawn, not what it shows.
constexpr std::array<std::string_view, 8> variants = {"fill",     "circle",  "square",  "rectangle",
                                                      "triangle", "diamond", "hexagon", "octagon"};

using Parts = std::span<const std::string_view>;

/// Longest file name in bytes; no icon has a longer name.
constexpr std::size_t longestName = 255;

bool isSymbolName(std::string_view symbol) {
  return !symbol.empty() && symbol.size() <= longestName &&
         std::ranges::all_of(symbol, [](char character) {
           return (character >= 'a' && character <= 'z') ||
                  (character >= 'A' && character <= 'Z') ||
                  (character >= '0' && character <= '9') || character == '.' || character == '-' ||
                  character == '_';
         });
}

std::vector<std::string_view> split(std::string_view text, char separator) {
  std::vector<std::string_view> parts;
  while (true) {
    const std::size_t end = text.find(separator);
    parts.push_back(text.substr(0, end));
    if (end == std::string_view::npos) return parts;
    text.remove_prefix(end + 1);
  }
}

std::string join(Parts parts, char separator) {
  std::string joined;
  for (const std::string_view part : parts) {
    if (!joined.empty()) joined += separator;
    joined += part;
  }
  return joined;
}

/// Empty if the table does not contain the symbol.
std::string_view iconInTable(std::string_view symbol) {
  const std::string lineStart = std::string("\n").append(symbol).append(" ");
  const std::size_t found = symbolNameTable.find(lineStart);
  if (found == std::string_view::npos) return {};
  const std::string_view rest = symbolNameTable.substr(found + lineStart.size());
  return rest.substr(0, rest.find('\n'));
}

/// True if the symbol shows the same thing without the parts: all are variants, or belong to a
/// badge.
bool canDrop(Parts parts) {
  for (const std::string_view part : parts) {
    if (part == "badge") return true;
    if (std::ranges::find(variants, part) == variants.end()) return false;
  }
  return true;
}

/// The base with fewer variants than `rest`.
void addReduced(std::vector<std::string>& names, const std::string& base, Parts rest) {
  if (rest.size() > 1 && rest.back() == "fill") names.push_back(base + "-fill");
  if (rest.size() > 1) names.push_back(base + "-" + std::string(rest.front()));
  if (!rest.empty()) names.push_back(base);
}

}  // namespace

std::vector<std::string> iconNamesForSymbol(std::string_view symbol) {
  std::vector<std::string> names;
  if (!isSymbolName(symbol)) return names;
  const std::vector<std::string_view> allParts = split(symbol, '.');
  const Parts parts(allParts);
  for (std::size_t length = parts.size(); length > 0; --length) {
    const Parts rest = parts.subspan(length);
    if (!canDrop(rest)) continue;
    const Parts base = parts.first(length);
    if (const std::string icon(iconInTable(join(base, '.'))); !icon.empty()) {
      names.push_back(rest.empty() ? icon : icon + "-" + join(rest, '-'));
      addReduced(names, icon, rest);
    }
    if (rest.empty()) names.push_back(join(parts, '-'));
    addReduced(names, join(base, '-'), rest);
  }
  return names;
}

std::vector<std::string> symbolNamesForIcons(std::vector<std::string> icons) {
  std::ranges::sort(icons);
  std::vector<std::string_view> solidIcons = split(solidIconNames, '\n');
  std::ranges::sort(solidIcons);
  std::vector<std::string> names;
  const auto add = [&](std::string name, std::string_view icon) {
    // The form comes before a badge.
    const bool hasForm = name.ends_with(".fill") || name.ends_with(".filled") ||
                         name.find(".badge") != std::string::npos;
    if (!hasForm && std::ranges::binary_search(solidIcons, icon)) names.push_back(name + ".fill");
    names.push_back(std::move(name));
  };
  for (const std::string& icon : icons) {
    std::string name = icon;
    std::ranges::replace(name, '-', '.');
    add(std::move(name), icon);
  }
  for (const std::string_view line : split(symbolNameTable, '\n')) {
    const std::size_t space = line.find(' ');
    if (space == std::string_view::npos) continue;
    const std::string_view icon = line.substr(space + 1);
    if (std::ranges::binary_search(icons, icon)) add(std::string(line.substr(0, space)), icon);
  }
  std::ranges::sort(names);
  names.erase(std::unique(names.begin(), names.end()), names.end());
  return names;
}

}  // namespace quillmar
