#include "settings_ui/symbol_completions.h"

#include <algorithm>
#include <string>
#include <utility>

#include "platform/image.h"
#include "platform/text.h"

namespace quillmar {

namespace {

/// The names that contain the part, in any case: first those that begin with it. Otherwise they
/// keep their order.
std::vector<std::string> namesWith(const std::string& part, std::vector<std::string> names) {
  const auto contains = [&](const std::string& name) {
    return text::lowercased(name).find(part) != std::string::npos;
  };
  std::erase_if(names, [&](const std::string& name) { return !contains(name); });
  std::stable_partition(names.begin(), names.end(), [&](const std::string& name) {
    return text::lowercased(name).starts_with(part);
  });
  return names;
}

}  // namespace

std::vector<TextCompletion> symbolCompletions(Images& images, std::string_view typed) {
  const std::string_view trimmed = text::trimWhitespace(typed);
  if (trimmed.empty()) return {};
  std::vector<std::string> names = namesWith(text::lowercased(trimmed), images.symbolNames());
  if (names.size() == 1 && names.front() == trimmed) return {};
  names.resize(std::min(names.size(), maximumSymbolCompletions));
  std::vector<TextCompletion> completions;
  for (std::string& name : names) {
    std::optional<Image> image = images.symbol(name);
    completions.push_back({.text = std::move(name), .image = std::move(image)});
  }
  return completions;
}

}  // namespace quillmar
