#include "cli/run_command.h"

#include <optional>
#include <string>
#include <utility>

#include "cli/commands.h"
#include "commands/command_runner.h"
#include "config/quillmar_config.h"
#include "config/settings_manager.h"
#include "platform/memory/memory_task_queues.h"
#include "platform/result.h"

namespace quillmar {

namespace {

bool asksForValue(const MenuItem& item) {
  return item.command.value.find(inputPlaceholder) != std::string::npos;
}

/// Without a terminal, the item's questions must be answered by options. Returns an error that
/// names the missing options; absent if none is missing.
std::optional<Error> missingOptions(const MenuItem& item, const RunInvocation& invocation,
                                    const Console& console) {
  const bool needsYes = item.confirmBeforeRunning && !invocation.yes;
  const bool needsInput = asksForValue(item) && !invocation.input;
  if (console.isInteractive() || (!needsYes && !needsInput)) return std::nullopt;

  const std::string asks = "“" + item.title + "” asks for ";
  const std::string give = ", and there is no terminal to ask on; give the option";
  if (!needsInput) return Error{asks + "a confirmation" + give + " “--yes”."};
  if (!needsYes) return Error{asks + "a value" + give + " “--input TEXT”."};
  return Error{asks + "a confirmation and a value" + give + "s “--yes” and “--input TEXT”."};
}

}  // namespace

ExitStatus runItem(const RunInvocation& invocation, const SettingsManager& settings,
                   CommandRunner& runner, MemoryTaskQueues& queues, Console& console) {
  const Result<MenuItem> item = itemNamed(invocation.item, settings);
  if (!item) {
    console.printError(printable(item.error().description) + "\n");
    return ExitStatus::usage;
  }

  if (const auto missing = missingOptions(item.value(), invocation, console)) {
    console.printError(printable(missing->description) + "\n");
    return ExitStatus::usage;
  }
  if (invocation.input && !asksForValue(item.value())) {
    console.printError("“" + printable(item.value().title) +
                       "” does not ask for a value, so “--input” was ignored.\n");
  }

  std::optional<CommandRunner::RunResult> result;
  runner.run(item.value(), [&](std::optional<CommandRunner::RunResult> reported) {
    result = std::move(reported);
  });
  // Runs background commands on this thread, too: there is no menu to keep responsive.
  queues.runAll();

  if (!result) return ExitStatus::failure;  // Cancelled.
  if (!result->output) {
    console.printError("The output is not valid UTF-8 and was omitted.\n");
  } else if (result->isErrorMessage) {
    console.printError(printableLines(*result->output) + "\n");
  } else if (!result->output->empty()) {
    console.print(*result->output);
    console.print("\n");
  } else if (!result->success) {
    console.printError("The command exited with an error.\n");
  }
  return result->success ? ExitStatus::success : ExitStatus::failure;
}

}  // namespace quillmar
