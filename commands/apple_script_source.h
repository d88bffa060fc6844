// Distinguishes AppleScript from plain shell commands in an item's text.

#pragma once

#include <string>
#include <string_view>

namespace quillmar {

/// Returns the trimmed text if it is AppleScript, judged by its first words or by having several
/// lines. Otherwise returns a `do shell script` statement with the text as its argument. Quotes and
/// backslashes are not escaped.
std::string appleScriptSource(std::string_view text);

}  // namespace quillmar
