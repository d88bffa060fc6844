// The AppleScript interpreter, in this process. Any thread.

#pragma once

#include <memory>
#include <optional>
#include <string>

#include "platform/result.h"

namespace quillmar {

/// What the interpreter says of a script that failed.
struct AppleScriptError {
  /// The error's message entry, when it has one that is a text.
  std::optional<std::string> message;
  /// The whole error in words.
  std::string description;
};

/// A source text made ready to run.
class AppleScript {
 public:
  virtual ~AppleScript() = default;

  /// Runs the script to its end, blocking. The value is the result's text, if it has one.
  virtual Result<std::optional<std::string>, AppleScriptError> execute() = 0;
};

class AppleScriptEngine {
 public:
  virtual ~AppleScriptEngine() = default;

  /// The script object for the source, or nullptr when none can be made. Errors of the script's own
  /// language come from execute().
  virtual std::unique_ptr<AppleScript> makeScript(const std::string& source) = 0;
};

}  // namespace quillmar
