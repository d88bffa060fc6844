// AppleScript on a system that has no interpreter for it: scripts that consist of "do shell script"
// statements run, each command in /bin/sh; all others fail and say which word stopped them.

#pragma once

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <utility>

#include "platform/apple_script.h"

namespace quillmar {

class Processes;

class ShellAppleScriptEngine final : public AppleScriptEngine {
 public:
  using MakeEnvironment = std::function<std::map<std::string, std::string>()>;

  /// `makeEnvironment` gives each command its environment; any thread. The processes must outlive
  /// the scripts.
  ShellAppleScriptEngine(Processes& processes, MakeEnvironment makeEnvironment)
      : processes_(processes), makeEnvironment_(std::move(makeEnvironment)) {}

  /// Never nullptr. Nothing runs unless the whole source is understood. The commands run one after
  /// another, in the root folder as under the real interpreter, until one fails. The value is what
  /// the last one wrote to standard output, without one trailing line feed; none when that is not
  /// UTF-8. What it wrote to standard error is the message when it failed, and nothing otherwise.
  std::unique_ptr<AppleScript> makeScript(const std::string& source) override;

 private:
  Processes& processes_;
  MakeEnvironment makeEnvironment_;
};

}  // namespace quillmar
