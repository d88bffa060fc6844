// The environment variables of this process at start. The platform takes the snapshot before any
// library can change them.

#pragma once

#include <map>
#include <optional>
#include <string>

namespace quillmar {

struct Environment {
  std::map<std::string, std::string> variables;

  /// The variable's value; absent if it is not set. A variable can be set to an empty value.
  std::optional<std::string> value(const std::string& name) const {
    const auto found = variables.find(name);
    if (found == variables.end()) return std::nullopt;
    return found->second;
  }
};

}  // namespace quillmar
