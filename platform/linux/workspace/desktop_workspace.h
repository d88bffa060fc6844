// Opening things with the desktop's other programs.

#pragma once

#include "platform/workspace.h"

namespace quillmar {

class DesktopWorkspace final : public Workspace {
 public:
  /// Says that it is not available yet.
  Result<void> openInTerminal(const std::string& title, const std::string& commandLine) override;

  /// By the user's choice of programs (mimeapps.list) and what desktop files offer. The completion
  /// comes from the main loop, and not at all once that has ended.
  void openURL(const std::string& url,
               std::function<void(const Result<void>& opened)> completion) override;
};

}  // namespace quillmar
