// Log lines: problems that are not worth a notification.

#pragma once

#include <functional>
#include <string_view>

namespace quillmar {

/// Writes one line; the line feed is added.
using LogLine = std::function<void(std::string_view line)>;

/// Writes the line to standard output, soon and on another thread: a stopped terminal or a full
/// pipe must not block the menu. Errors are ignored. A regular end of the process waits a moment
/// for lines that have not been written.
void logToStandardOutput(std::string_view line);

/// Does what a regular end of the process does, for an end by _exit().
void flushStandardOutputLog();

/// Writes the line to standard error at once. Errors are ignored.
void logToStandardError(std::string_view line);

}  // namespace quillmar
