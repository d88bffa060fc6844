// Lines for whoever watches the program run: problems that are not worth a notification.

#pragma once

#include <functional>
#include <string_view>

namespace quillmar {

/// Writes one line; the line feed is added.
using LogLine = std::function<void(std::string_view line)>;

/// Writes the line to standard output at once. A closed or full standard output is ignored.
void logToStandardOutput(std::string_view line);

/// The same on standard error.
void logToStandardError(std::string_view line);

}  // namespace quillmar
