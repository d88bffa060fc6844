// Opening things with the desktop's other programs. Main thread.

#pragma once

#include <functional>
#include <string>

#include "platform/result.h"

namespace quillmar {

class Workspace {
 public:
  virtual ~Workspace() = default;

  /// Opens a terminal window in which the user sees the command line run.
  virtual Result<void> openInTerminal(const std::string& title, const std::string& commandLine) = 0;

  /// Opens the address with the desktop's program for its scheme: the browser, the mail program.
  /// Never waits. The completion runs once, perhaps before this call returns, with the error when
  /// there is no such program or when it could not be started.
  virtual void openURL(const std::string& url,
                       std::function<void(const Result<void>& opened)> completion) = 0;
};

}  // namespace quillmar
