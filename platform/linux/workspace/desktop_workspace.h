// Opening things with the desktop's other programs.

#pragma once

#include "platform/workspace.h"

namespace quillmar {

class DesktopWorkspace final : public Workspace {
 public:
  /// Says that it is not available yet.
  Result<void> openInTerminal(const std::string& title, const std::string& commandLine) override;
};

}  // namespace quillmar
