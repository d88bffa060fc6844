// Which terminal opens, and with which arguments. Any thread.

#pragma once

#include <string>

#include "platform/environment.h"
#include "platform/file_system.h"
#include "platform/processes.h"
#include "platform/result.h"

namespace quillmar {

/// The process that opens a terminal window and runs the executable file in it. When the file has
/// ended, the window waits for Enter. The terminal is the first of these that is installed:
/// - the command in the environment variable TERMINAL
/// - xdg-terminal-exec, which starts the terminal that the user has chosen
/// - x-terminal-emulator, the choice of a Debian system
/// - a known terminal
/// The error is a sentence that says what to install or to set.
Result<Process> terminalProcess(const std::string& file, const Environment& environment,
                                const FileSystem& files);

}  // namespace quillmar
