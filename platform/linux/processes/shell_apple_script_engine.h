// AppleScript on a system without an interpreter for it. Scripts that consist of "do shell script"
// statements run, each command in /bin/sh. All others fail; the error names the first word that is
// not supported.

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

  /// Never nullptr. Nothing runs unless the whole source can be parsed. The commands run one after
  /// another, in the root folder as under the real interpreter, until one fails. The value is the
  /// standard output of the last command, without one trailing line feed; absent if it is not
  /// UTF-8. The standard error of a failed command is the message; that of other commands is
  /// ignored.
  std::unique_ptr<AppleScript> makeScript(const std::string& source) override;

 private:
  Processes& processes_;
  MakeEnvironment makeEnvironment_;
};

}  // namespace quillmar
