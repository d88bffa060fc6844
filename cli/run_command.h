// Runs one item in this process, for the terminal.

#pragma once

#include "cli/arguments.h"
#include "cli/console.h"

namespace quillmar {

class CommandRunner;
class MemoryTaskQueues;
class SettingsManager;

/// Runs the item and waits for its report. `queues` are the ones that the runner was made with, and
/// its prompts are to be answered by the invocation's options or on the console. When neither can
/// answer, the options that are missing are named and nothing runs.
ExitStatus runItem(const RunInvocation& invocation, const SettingsManager& settings,
                   CommandRunner& runner, MemoryTaskQueues& queues, Console& console);

}  // namespace quillmar
