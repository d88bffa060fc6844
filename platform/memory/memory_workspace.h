// A fake workspace that records what it opens.

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include "platform/workspace.h"

namespace quillmar {

struct MemoryWorkspace final : Workspace {
  /// If set, every call fails with this error.
  std::optional<Error> error;
  /// Paths of the files that ran in a terminal.
  std::vector<std::string> openedInTerminal;
  std::vector<std::string> revealedFiles;
  std::vector<std::string> openedURLs;

  Result<void> openInTerminal(const std::string& path) override {
    if (error) return *error;
    openedInTerminal.push_back(path);
    return {};
  }

  void revealFile(const std::string& path,
                  std::function<void(const Result<void>& revealed)> completion) override {
    if (error) return completion(*error);
    revealedFiles.push_back(path);
    completion({});
  }

  void openURL(const std::string& url,
               std::function<void(const Result<void>& opened)> completion) override {
    if (error) return completion(*error);
    openedURLs.push_back(url);
    completion({});
  }
};

}  // namespace quillmar
