#include "config/quillmar_config.h"

#include <algorithm>

#include "config/checked_arithmetic.h"
#include "platform/uuid.h"

namespace quillmar {

std::string_view rawValue(CommandType type) {
  switch (type) {
    case CommandType::shellCommand:
      return "Shell Command";
    case CommandType::scriptFile:
      return "Script File";
    case CommandType::appleScript:
      return "AppleScript";
  }
  return {};
}

std::optional<CommandType> commandTypeFromRawValue(std::string_view rawValue) {
  for (const CommandType type : allCommandTypes) {
    if (quillmar::rawValue(type) == rawValue) return type;
  }
  return std::nullopt;
}

MenuItem MenuItem::separator() {
  MenuItem item;
  item.id = makeUuid();
  item.isSeparator = true;
  return item;
}

std::vector<const MenuCategory*> categoriesInDisplayOrder(const QuillmarConfig& config) {
  std::vector<const MenuCategory*> sorted;
  sorted.reserve(config.categories.size());
  for (const MenuCategory& category : config.categories) sorted.push_back(&category);
  std::ranges::stable_sort(sorted, {}, &MenuCategory::sortOrder);
  return sorted;
}

std::int64_t nextSortOrder(const QuillmarConfig& config) {
  if (config.categories.empty()) return 0;
  const auto largest = std::ranges::max_element(config.categories, {}, &MenuCategory::sortOrder);
  return checkedAdd(largest->sortOrder, 1);
}

}  // namespace quillmar
