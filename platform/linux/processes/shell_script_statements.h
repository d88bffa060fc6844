// The part of the AppleScript language that works without its interpreter: statements of the form
//   do shell script "…"
// one per line, with blank lines and comments ("--" or "#" to the end of the line) between them.

#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "platform/result.h"

namespace quillmar {

/// The shell commands of the source, in order. Keywords are recognised in upper and lower case;
/// strings may run over several lines and know the escapes \" \\ \n \r \t. The error names the
/// first word that is not part of such a statement, or what is wrong with a string, and its line.
/// Precondition: the source is UTF-8.
Result<std::vector<std::string>> parseShellScriptStatements(std::string_view source);

}  // namespace quillmar
