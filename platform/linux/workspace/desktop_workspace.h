// Opens URLs, files and terminals with other programs of the desktop.

#pragma once

#include <functional>
#include <string>

#include "platform/environment.h"
#include "platform/file_system.h"
#include "platform/processes.h"
#include "platform/workspace.h"

namespace quillmar {

/// Completions are called from the main loop, and never after the loop has ended.
class DesktopWorkspace final : public Workspace {
 public:
  /// The arguments must outlive this object.
  DesktopWorkspace(const Environment& environment, const FileSystem& files, Processes& processes);

  Result<void> openInTerminal(const std::string& path) override;

  /// Uses the user's default applications (mimeapps.list) and the installed desktop files.
  void openURL(const std::string& url,
               std::function<void(const Result<void>& opened)> completion) override;

 private:
  const Environment& environment_;
  const FileSystem& files_;
  Processes& processes_;
};

}  // namespace quillmar
