// The environment variables of this process, as they stood when it started. The platform takes the
// snapshot before any library has had a chance to change them.

#pragma once

#include <map>
#include <optional>
#include <string>

namespace quillmar {

struct Environment {
  std::map<std::string, std::string> variables;

  /// The variable's value; absent when it is not set. An empty value is a value.
  std::optional<std::string> value(const std::string& name) const {
    const auto found = variables.find(name);
    if (found == variables.end()) return std::nullopt;
    return found->second;
  }
};

}  // namespace quillmar
