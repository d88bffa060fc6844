// Log lines, for problems that do not need a notification.

#pragma once

#include <functional>
#include <string_view>

namespace quillmar {

/// Writes one line and a line feed.
using LogLine = std::function<void(std::string_view line)>;

/// Writes the line to standard output asynchronously, on another thread: a stopped terminal or a
/// full pipe must not block the menu. Control characters are escaped, so that the line stays one
/// line. Errors are ignored. At exit, the process waits up to one second for lines that are not
/// written yet.
void logToStandardOutput(std::string_view line);

/// Waits for unwritten lines as a normal exit does. Call it before _exit().
void flushStandardOutputLog();

/// Writes the line to standard error at once. Errors are ignored.
void logToStandardError(std::string_view line);

}  // namespace quillmar
