// The part of the AppleScript language that works without its interpreter: statements of the form
//   do shell script "…"
// one per line, with blank lines and comments ("--" or "#" to the end of the line) between them.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/result.h"

namespace quillmar {

/// Parses the source and returns its shell commands in order. Keywords are case-insensitive.
/// Strings may span several lines and support the escapes \" \\ \n \r \t. The error names the first
/// word that is not part of such a statement, or the problem in a string, and the line.
/// Precondition: the source is UTF-8.
Result<std::vector<std::string>> parseShellScriptStatements(std::string_view source);

}  // namespace quillmar
