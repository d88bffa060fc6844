#include "platform/bundle.h"

namespace quillmar {

std::optional<std::string> Bundle::informationString(std::string_view key) const {
  const BundleInformation& information = informationDictionary();
  const auto found = information.find(key);
  if (found == information.end()) return std::nullopt;
  return found->second;
}

}  // namespace quillmar
