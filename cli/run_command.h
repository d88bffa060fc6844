// Runs one item in this process, for the terminal.

#pragma once

#include "cli/arguments.h"
#include "cli/console.h"
#include "cli/terminal_prompts.h"

namespace quillmar {

class CommandRunner;
class MemoryTaskQueues;
class SettingsManager;

/// Runs the item and waits for its report. `queues` and `prompts` are the ones that the runner was
/// made with.
ExitStatus runItem(const RunInvocation& invocation, const SettingsManager& settings,
                   CommandRunner& runner, MemoryTaskQueues& queues, const TerminalPrompts& prompts,
                   Console& console);

}  // namespace quillmar
