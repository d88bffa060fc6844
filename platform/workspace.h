// Opens URLs, files and terminals with other programs of the desktop. Main thread.

#pragma once

#include <functional>
#include <string>

#include "platform/result.h"

namespace quillmar {

class Workspace {
 public:
  virtual ~Workspace() = default;

  /// Opens a terminal window and runs the executable file in it. Does not wait for either. The
  /// window outlives this program, and stays open when the file has ended, so that its output can
  /// be read. Fails if no terminal can be started.
  virtual Result<void> openInTerminal(const std::string& path) = 0;

  /// Shows the file, selected, in the file manager. Does not block. The completion runs once,
  /// possibly before this call returns. It receives the error if no file manager could be opened.
  virtual void revealFile(const std::string& path,
                          std::function<void(const Result<void>& revealed)> completion) = 0;

  /// Opens the URL with the default program for its scheme, such as the browser or the mail
  /// program. Does not block. The completion runs once, possibly before this call returns. It
  /// receives the error if there is no such program or it cannot be started.
  virtual void openURL(const std::string& url,
                       std::function<void(const Result<void>& opened)> completion) = 0;
};

}  // namespace quillmar
