// Opening things with the desktop's other programs. Main thread.

#pragma once

#include <string>

#include "platform/result.h"

namespace quillmar {

class Workspace {
 public:
  virtual ~Workspace() = default;

  /// Opens a terminal window in which the user sees the command line run.
  virtual Result<void> openInTerminal(const std::string& title, const std::string& commandLine) = 0;
};

}  // namespace quillmar
