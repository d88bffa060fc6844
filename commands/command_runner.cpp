#include "commands/command_runner.h"

#include <utility>

#include "commands/apple_script_source.h"
#include "commands/command_environment.h"
#include "commands/terminal_script.h"
#include "platform/apple_script.h"
#include "platform/pasteboard.h"
#include "platform/text.h"
#include "platform/user_database.h"
#include "platform/user_directories.h"
#include "platform/user_notifications.h"
#include "platform/uuid.h"
#include "platform/workspace.h"

namespace quillmar {

namespace {

constexpr std::string_view fallbackShell = "/bin/zsh";
constexpr std::size_t notificationBodyCharacters = 400;
// A character can have any number of combining marks; the bus limits messages to 128 MiB.
constexpr std::size_t notificationBodyBytes = 64 << 10;
constexpr std::size_t notificationTitleBytes = 1 << 10;

std::string replacingEvery(std::string_view whole, std::string_view part,
                           std::string_view replacement) {
  std::string result;
  std::size_t copied = 0;
  for (std::size_t found = whole.find(part); found != std::string_view::npos;
       found = whole.find(part, copied)) {
    result.append(whole, copied, found - copied).append(replacement);
    copied = found + part.size();
  }
  return result.append(whole, copied);
}

/// Removes white space and newlines at both ends without a copy of the text.
void trimInPlace(std::string& text) {
  const std::string_view trimmed = text::trimWhitespaceAndNewlines(text);
  const auto front = static_cast<std::size_t>(trimmed.data() - text.data());
  text.resize(front + trimmed.size());
  text.erase(0, front);
}

/// The part of a long text that a notification shows.
std::string_view notificationBody(std::string_view text) {
  return text::lastCharacters(text::lastBytes(text, notificationBodyBytes),
                              notificationBodyCharacters);
}

CommandRunner::RunResult errorMessage(std::string message) {
  return {.output = std::move(message), .success = false, .isErrorMessage = true};
}

std::string failureTitle(const MenuItem& item) {
  constexpr std::string_view suffix = " failed";
  const std::size_t room = notificationTitleBytes - suffix.size();
  return std::string(text::firstBytes(item.title, room)).append(suffix);
}

}  // namespace

CommandRunner::CommandRunner(Collaborators collaborators)
    : collaborators_(std::move(collaborators)),
      queue_(collaborators_.queues.makeConcurrentQueue(
          {"com.tovenworks.quillmar.commands", QualityOfService::userInitiated})) {}

CommandRunner& CommandRunner::shared() {
  static auto* runner = new CommandRunner({});
  return *runner;
}

void CommandRunner::run(const MenuItem& item, const Completion& completion) {
  if (item.isSeparator) return;
  if (!item.confirmBeforeRunning) {
    askForInputIfNeeded(item, completion);
    return;
  }

  PromptRequest request;
  request.title = "Run “" + item.title + "”?";
  request.message = text::trimWhitespaceAndNewlines(item.command.value);
  request.confirmTitle = "Run";
  ask(std::move(request), item, completion,
      [this, item, completion](const auto& /*text*/) { askForInputIfNeeded(item, completion); });
}

void CommandRunner::askForInputIfNeeded(const MenuItem& item, const Completion& completion) {
  if (item.command.value.find(inputPlaceholder) == std::string::npos) {
    execute(item, std::nullopt, completion);
    return;
  }

  PromptRequest request;
  request.title = item.title;
  request.message = item.inputPrompt.value_or("");
  if (request.message.empty()) request.message = "Enter a value";
  request.placeholder = "";
  request.confirmTitle = "Run";
  ask(std::move(request), item, completion,
      [this, item, completion](const auto& text) { execute(item, text.value_or(""), completion); });
}

void CommandRunner::ask(PromptRequest request, const MenuItem& item, const Completion& completion,
                        std::function<void(const std::optional<std::string>& text)> onConfirm) {
  const Result<void> shown = collaborators_.prompts.show(
      std::move(request),
      [completion, onConfirm = std::move(onConfirm)](bool confirmed, const auto& text) {
        if (confirmed) {
          onConfirm(text);
        } else if (completion) {
          completion(std::nullopt);
        }
      });
  if (shown) return;
  collaborators_.log("Could not show the prompt of item " + item.id + ": " +
                     shown.error().description);
  notify(item.title, shown.error().description);
  if (completion) completion(std::nullopt);
}

void CommandRunner::execute(const MenuItem& item, const std::optional<std::string>& input,
                            const Completion& completion) {
  MenuCommand command = item.command;
  if (input) command.value = replacingEvery(command.value, inputPlaceholder, *input);

  if (command.openInTerminal && command.type != CommandType::appleScript) {
    const Result<void> opened = openInTerminal(command, item.title);
    if (!opened) notify(failureTitle(item), opened.error().description);
    if (completion) {
      completion(RunResult{.output = opened ? "" : opened.error().description,
                           .success = opened.ok(),
                           .isErrorMessage = !opened.ok()});
    }
    return;
  }

  const Preferences preferences = collaborators_.settings.config.preferences;
  const auto finish = [this, item, command, preferences, completion](RunResult result) {
    // Shared, so that copies of the task do not copy the output, which may be large.
    auto shared = std::make_shared<RunResult>(std::move(result));
    collaborators_.queues.mainQueue().async([this, item, command, preferences, completion, shared] {
      report(item, command, completion ? *shared : std::move(*shared), preferences);
      if (completion) completion(std::move(*shared));
    });
  };
  const auto work = [this, command, preferences, finish] {
    finish(runByType(command, preferences.useLoginShell));
  };
  if (!command.runInBackground) {
    work();
  } else if (const Result<void> started = queue_->async(work); !started) {
    finish(errorMessage("The command could not be started. " + started.error().description));
  }
}

CommandRunner::RunResult CommandRunner::runByType(const MenuCommand& command, bool loginShell) {
  switch (command.type) {
    case CommandType::shellCommand:
      return runShell(command.value, loginShell);
    case CommandType::scriptFile:
      return runScriptFile(command.value);
    case CommandType::appleScript:
      return runAppleScript(command.value);
  }
  return {};
}

void CommandRunner::report(const MenuItem& item, const MenuCommand& command, RunResult result,
                           const Preferences& preferences) {
  const bool hasOutput = result.output && !result.output->empty();
  std::string body;
  if (hasOutput) body = notificationBody(*result.output);
  if (command.copyToClipboard && result.success && hasOutput) {
    collaborators_.pasteboard.setString(*std::move(result.output));
  }
  if (result.success && command.showNotification) {
    notify(item.title, hasOutput ? body : "Command completed successfully");
  } else if (!result.success && (command.showNotification || preferences.notifyOnFailure)) {
    notify(failureTitle(item), hasOutput ? body : "The command exited with an error.");
  }
}

CommandRunner::RunResult CommandRunner::runShell(const std::string& commandText, bool loginShell) {
  Process process;
  process.executable = shell();
  if (loginShell) process.arguments.emplace_back("-l");
  process.arguments.emplace_back("-c");
  process.arguments.push_back(commandText);
  process.environment = augmentedEnvironment();
  process.workingDirectory = collaborators_.userDirectories.homeDirectory();
  return capture(process);
}

CommandRunner::RunResult CommandRunner::runScriptFile(const std::string& path) {
  const std::string expanded = expandingTilde(path, collaborators_.userDirectories.homeDirectory());
  if (!collaborators_.files.exists(expanded)) return errorMessage("Script file not found: " + path);

  ScriptLaunch launch = scriptLaunch(expanded);
  Process process;
  process.executable = std::move(launch.executable);
  process.arguments = std::move(launch.arguments);
  process.environment = augmentedEnvironment();
  process.workingDirectory = deletingLastPathComponent(expanded);
  return capture(process);
}

CommandRunner::RunResult CommandRunner::runAppleScript(const std::string& source) {
  const std::unique_ptr<AppleScript> script =
      collaborators_.appleScript.makeScript(appleScriptSource(source));
  if (!script) return errorMessage("Failed to create AppleScript");

  auto outcome = script->execute();
  if (!outcome) {
    return errorMessage(outcome.error().message.value_or(outcome.error().description));
  }
  return {.output = std::move(outcome).value(), .success = true};
}

CommandRunner::RunResult CommandRunner::capture(const Process& process) {
  auto launched = collaborators_.processes.launch(process);
  if (!launched) return errorMessage(launched.error().description);

  Result<ProcessOutput> read = launched.value()->readToEnd();
  const int status = launched.value()->waitForExit();
  if (!read) return errorMessage(read.error().description);

  RunResult result;
  std::string& bytes = read.value().standardOutput;
  if (text::isValidUtf8(bytes)) {
    trimInPlace(bytes);
    result.output = std::move(bytes);
  }
  result.success = status == 0;
  return result;
}

std::map<std::string, std::string> CommandRunner::augmentedEnvironment() const {
  return quillmar::augmentedEnvironment(collaborators_.environment,
                                        collaborators_.userDirectories.homeDirectory(),
                                        collaborators_.files);
}

void CommandRunner::notify(std::string_view title, std::string_view body) {
  UserNotification notification;
  notification.identifier = makeUuid();
  notification.title = text::firstBytes(title, notificationTitleBytes);
  notification.body = notificationBody(body);
  collaborators_.notifications.add(std::move(notification),
                                   [log = collaborators_.log](std::optional<Error> error) {
                                     if (error) log("Notification error: " + error->description);
                                   });
}

Result<void> CommandRunner::openInTerminal(const MenuCommand& command, const std::string& title) {
  const std::string shellPath = shell();
  const std::string home = collaborators_.userDirectories.homeDirectory();
  const Result<std::string> script = writeTerminalScript(
      {.command = command, .title = title, .shell = shellPath, .homeDirectory = home},
      collaborators_.environment, collaborators_.files);
  if (!script) return script.error();
  return collaborators_.workspace.openInTerminal(script.value());
}

std::string CommandRunner::shell() const {
  std::string path = collaborators_.userDatabase.loginShell().value_or("");
  return collaborators_.files.isExecutableFile(path) ? path : std::string(fallbackShell);
}

}  // namespace quillmar
