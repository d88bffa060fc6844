// Opens URLs and terminals with other programs of the desktop. Main thread.

#pragma once

#include <functional>
#include <string>

#include "platform/result.h"

namespace quillmar {

class Workspace {
 public:
  virtual ~Workspace() = default;

  /// Opens a terminal window and runs the command line in it.
  virtual Result<void> openInTerminal(const std::string& title, const std::string& commandLine) = 0;

  /// Opens the URL with the default program for its scheme, such as the browser or the mail
  /// program. Does not block. The completion runs once, possibly before this call returns. It
  /// receives the error if there is no such program or it cannot be started.
  virtual void openURL(const std::string& url,
                       std::function<void(const Result<void>& opened)> completion) = 0;
};

}  // namespace quillmar
