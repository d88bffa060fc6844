// Runs items: shows the item's prompts, runs its command as a child process or as a script in this
// process, and reports the result through the pasteboard and notifications. Runs start and report
// on the main thread. Background commands run on a concurrent queue; other commands block the main
// thread until they end.

#pragma once

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "commands/prompt_panel.h"
#include "commands/script_launch.h"
#include "config/quillmar_config.h"
#include "config/settings_manager.h"
#include "platform/log.h"
#include "platform/platform.h"
#include "platform/processes.h"
#include "platform/result.h"
#include "platform/task_queue.h"

namespace quillmar {

/// Placeholder in a command for the value that the user enters.
inline constexpr std::string_view inputPlaceholder = "{{input}}";

class CommandRunner {
 public:
  struct RunResult {
    /// The command's output, without white space and newlines at both ends; absent if it is not
    /// UTF-8, or if a script returned no text.
    std::optional<std::string> output;
    bool success = false;
    /// True if `output` is an error message about the command instead of its output.
    bool isErrorMessage = false;

    bool operator==(const RunResult&) const = default;
  };

  /// Receives the result of a run after it was reported, or nothing if the user cancelled the run
  /// or the prompt could not be shown. Not called for separators. Main thread.
  using Completion = std::function<void(std::optional<RunResult> result)>;

  /// Not owned; all must outlive the runner.
  struct Collaborators {
    SettingsManager& settings = SettingsManager::shared();
    Prompts& prompts = PanelPrompts::shared();
    TaskQueues& queues = Platform::shared().queues;
    const Environment& environment = Platform::shared().environment;
    const UserDatabase& userDatabase = Platform::shared().userDatabase;
    const UserDirectories& userDirectories = Platform::shared().userDirectories;
    FileSystem& files = Platform::shared().files;
    Processes& processes = Platform::shared().processes;
    AppleScriptEngine& appleScript = Platform::shared().appleScript;
    Workspace& workspace = Platform::shared().workspace;
    Pasteboard& pasteboard = Platform::shared().pasteboard;
    UserNotificationCenter& notifications = Platform::shared().notifications;
    LogLine log = logToStandardOutput;
  };

  /// The runner must outlive its runs.
  explicit CommandRunner(Collaborators collaborators);

  CommandRunner(const CommandRunner&) = delete;
  CommandRunner& operator=(const CommandRunner&) = delete;

  /// The process-wide runner, created on first use from the installed platform.
  static CommandRunner& shared();

  /// Runs an item: confirmation, input, command, report. A separator does nothing.
  void run(const MenuItem& item, const Completion& completion = nullptr);

  /// Asks for the value of "{{input}}" if the command contains it, then executes the item.
  void askForInputIfNeeded(const MenuItem& item, const Completion& completion = nullptr);

  /// Replaces every placeholder with the input, without quoting, and runs the command or opens it
  /// in a terminal.
  void execute(const MenuItem& item, const std::optional<std::string>& input,
               const Completion& completion = nullptr);

  // Command types. Each function blocks until the command ends. Any thread.

  RunResult runShell(const std::string& commandText, bool loginShell);
  RunResult runScriptFile(const std::string& path);
  RunResult runAppleScript(const std::string& source);

  /// Launches the process, reads its output to the end, then waits for it.
  RunResult capture(const Process& process);

  /// The environment for a child process, computed at each call. Any thread.
  std::map<std::string, std::string> augmentedEnvironment() const;

  /// Posts a notification with the last 400 characters of the body. Texts too long for a D-Bus
  /// message are truncated. Constant time for bodies of any length.
  void notify(std::string_view title, std::string_view body);

  /// Writes the command to an executable file and opens it in a terminal window. Does not wait for
  /// the command.
  Result<void> openInTerminal(const MenuCommand& command, const std::string& title);

 private:
  /// Shows the prompt. If the user confirms, calls `onConfirm` with the text of the field, if there
  /// is one.
  void ask(PromptRequest request, const MenuItem& item, const Completion& completion,
           std::function<void(const std::optional<std::string>& text)> onConfirm);
  /// The user's login shell, or a fixed one if that is not an executable file.
  std::string shell() const;
  RunResult runByType(const MenuCommand& command, bool loginShell);
  void report(const MenuItem& item, const MenuCommand& command, RunResult result,
              const Preferences& preferences);

  Collaborators collaborators_;
  std::unique_ptr<ConcurrentQueue> queue_;
};

}  // namespace quillmar
