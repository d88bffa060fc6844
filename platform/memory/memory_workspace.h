// A workspace that only remembers what it was to open.

#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/workspace.h"

namespace quillmar {

struct MemoryWorkspace final : Workspace {
  std::optional<Error> error;
  std::vector<std::pair<std::string, std::string>> opened;

  Result<void> openInTerminal(const std::string& title, const std::string& commandLine) override {
    if (error) return *error;
    opened.emplace_back(title, commandLine);
    return {};
  }
};

}  // namespace quillmar
