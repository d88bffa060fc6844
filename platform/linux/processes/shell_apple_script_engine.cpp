#include "platform/linux/processes/shell_apple_script_engine.h"

#include <utility>

#include "platform/linux/processes/shell_script_statements.h"
#include "platform/processes.h"
#include "platform/text.h"

namespace quillmar {

namespace {

using Value = std::optional<std::string>;

AppleScriptError failure(const std::string& message) {
  return {message, message};
}

class ShellAppleScript final : public AppleScript {
 public:
  ShellAppleScript(std::string source, Processes& processes,
                   ShellAppleScriptEngine::MakeEnvironment makeEnvironment)
      : source_(std::move(source)),
        processes_(processes),
        makeEnvironment_(std::move(makeEnvironment)) {}

  Result<Value, AppleScriptError> execute() override {
    const Result<std::vector<std::string>> commands = parseShellScriptStatements(source_);
    if (!commands) return failure(commands.error().description);
    Value value;
    for (const std::string& command : commands.value()) {
      Result<Value, AppleScriptError> ran = run(command);
      if (!ran) return ran;
      value = std::move(ran).value();
    }
    return value;
  }

 private:
  Result<Value, AppleScriptError> run(const std::string& command) const {
    Result<std::unique_ptr<RunningProcess>> launched =
        processes_.launch({.executable = "/bin/sh",
                           .arguments = {"-c", command},
                           .environment = makeEnvironment_(),
                           .workingDirectory = "/",
                           .standardError = StandardError::separate});
    if (!launched) return failure(launched.error().description);
    RunningProcess& child = *launched.value();
    Result<ProcessOutput> read = child.readToEnd();
    const int status = child.waitForExit();
    if (!read) return failure(read.error().description);
    ProcessOutput& output = read.value();
    if (status != 0) return failureOf(withoutLineFeed(std::move(output.standardError)), status);
    std::string value = withoutLineFeed(std::move(output.standardOutput));
    return text::isValidUtf8(value) ? Value(std::move(value)) : std::nullopt;
  }

  static std::string withoutLineFeed(std::string text) {
    if (text.ends_with('\n')) text.pop_back();
    return text;
  }

  static AppleScriptError failureOf(const std::string& errorText, int status) {
    const std::string message = errorText.empty() ? "The command exited with a non-zero status."
                                                  : text::replacingInvalidCharacters(errorText);
    return {message, message + " (error " + std::to_string(status) + ")"};
  }

  std::string source_;
  Processes& processes_;
  ShellAppleScriptEngine::MakeEnvironment makeEnvironment_;
};

}  // namespace

std::unique_ptr<AppleScript> ShellAppleScriptEngine::makeScript(const std::string& source) {
  return std::make_unique<ShellAppleScript>(source, processes_, makeEnvironment_);
}

}  // namespace quillmar
