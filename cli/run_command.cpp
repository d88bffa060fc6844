#include "cli/run_command.h"

#include <optional>
#include <string>

#include "cli/commands.h"
#include "commands/command_runner.h"
#include "config/settings_manager.h"
#include "platform/memory/memory_task_queues.h"

namespace quillmar {

ExitStatus runItem(const RunInvocation& invocation, const SettingsManager& settings,
                   CommandRunner& runner, MemoryTaskQueues& queues, const TerminalPrompts& prompts,
                   Console& console) {
  const Result<MenuItem> item = itemNamed(invocation.item, settings);
  if (!item) {
    console.printError(printable(item.error().description) + "\n");
    return ExitStatus::usage;
  }

  const bool asksForValue = item.value().command.value.find(inputPlaceholder) != std::string::npos;
  if (invocation.input && !asksForValue) {
    console.printError("“" + printable(item.value().title) +
                       "” does not ask for a value, so “--input” has no place.\n");
    return ExitStatus::usage;
  }

  std::optional<CommandRunner::RunResult> result;
  runner.run(item.value(), [&](std::optional<CommandRunner::RunResult> reported) {
    result = std::move(reported);
  });
  // Everything, the command included, runs here: there is nothing else to keep alive meanwhile.
  queues.runAll();

  if (prompts.missingOption()) {
    console.printError("“" + printable(item.value().title) +
                       "” asks before it runs and there is no terminal to ask on; give the option "
                       "“" +
                       *prompts.missingOption() + "”.\n");
    return ExitStatus::usage;
  }
  if (!result) return ExitStatus::failure;  // Declined.
  if (!result->output) {
    console.printError("The output is not valid UTF-8 text and was left out.\n");
  } else if (result->success || !result->output->empty()) {
    console.print(*result->output + "\n");
  } else {
    console.printError("The command exited with an error.\n");
  }
  return result->success ? ExitStatus::success : ExitStatus::failure;
}

}  // namespace quillmar
