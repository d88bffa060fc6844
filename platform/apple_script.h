// The AppleScript interpreter, in this process. Any thread.

#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/result.h"

namespace quillmar {

/// The error of a script that failed.
struct AppleScriptError {
  /// The error's message; absent if it has none or it is not text.
  std::optional<std::string> message;
  /// Text form of the whole error.
  std::string description;
};

/// A script that is ready to run.
class AppleScript {
 public:
  virtual ~AppleScript() = default;

  /// Runs the script and blocks until it ends. Returns the text of its result; absent if the result
  /// is not text.
  virtual Result<std::optional<std::string>, AppleScriptError> execute() = 0;
};

class AppleScriptEngine {
 public:
  virtual ~AppleScriptEngine() = default;

  /// Creates the script object for the source; nullptr if that fails. Syntax errors and run-time
  /// errors of the script are reported by execute().
  virtual std::unique_ptr<AppleScript> makeScript(const std::string& source) = 0;
};

}  // namespace quillmar
