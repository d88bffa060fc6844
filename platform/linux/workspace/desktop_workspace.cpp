#include "platform/linux/workspace/desktop_workspace.h"

namespace quillmar {

Result<void> DesktopWorkspace::openInTerminal(const std::string& /*title*/,
                                              const std::string& /*commandLine*/) {
  return Error{"Opening in a terminal is not available yet."};
}

}  // namespace quillmar
