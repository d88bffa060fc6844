// A fake workspace that records what it opens.

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/workspace.h"

namespace quillmar {

struct MemoryWorkspace final : Workspace {
  /// If set, every call fails with this error.
  std::optional<Error> error;
  /// Title and command line of each opened terminal.
  std::vector<std::pair<std::string, std::string>> opened;
  std::vector<std::string> openedURLs;

  Result<void> openInTerminal(const std::string& title, const std::string& commandLine) override {
    if (error) return *error;
    opened.emplace_back(title, commandLine);
    return {};
  }

  void openURL(const std::string& url,
               std::function<void(const Result<void>& opened)> completion) override {
    if (error) return completion(*error);
    openedURLs.push_back(url);
    completion({});
  }
};

}  // namespace quillmar
