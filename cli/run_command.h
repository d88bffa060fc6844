// Runs one item in this process, for the terminal.

#pragma once

#include "cli/arguments.h"
#include "cli/console.h"

namespace quillmar {

class CommandRunner;
class MemoryTaskQueues;
class SettingsManager;

/// Runs the item and waits for its report. The command's output goes to standard output, messages
/// of this program go to standard error. `queues` must be the ones of the runner, and its prompts
/// must use the invocation's options and the console. If neither can answer a prompt of the item,
/// prints the missing options and runs nothing.
ExitStatus runItem(const RunInvocation& invocation, const SettingsManager& settings,
                   CommandRunner& runner, MemoryTaskQueues& queues, Console& console);

}  // namespace quillmar
