// Opens URLs with other programs of the desktop.

#pragma once

#include "platform/workspace.h"

namespace quillmar {

class DesktopWorkspace final : public Workspace {
 public:
  /// Always fails: not available yet.
  Result<void> openInTerminal(const std::string& title, const std::string& commandLine) override;

  /// Uses the user's default applications (mimeapps.list) and the installed desktop files. The
  /// completion is called from the main loop, and never after the loop has ended.
  void openURL(const std::string& url,
               std::function<void(const Result<void>& opened)> completion) override;
};

}  // namespace quillmar
