// Runs one item in this process, for the terminal.

#pragma once

#include "cli/arguments.h"
#include "cli/console.h"

namespace quillmar {

class CommandRunner;
class MemoryTaskQueues;
class SettingsManager;

/// Runs the item and waits for its report. Prints the command's output to standard output and the
/// program's own messages to standard error. If the item asks a question that neither an option nor
/// a terminal can answer, prints the missing options and runs nothing. Preconditions: `queues` are
/// the runner's, and the runner's prompts use the options of `invocation` and `console`.
ExitStatus runItem(const RunInvocation& invocation, const SettingsManager& settings,
                   CommandRunner& runner, MemoryTaskQueues& queues, Console& console);

}  // namespace quillmar
