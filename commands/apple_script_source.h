// What counts as AppleScript. An item's text may also be a plain shell command.

#pragma once

#include <string>
#include <string_view>

namespace quillmar {

/// The trimmed text itself when it is AppleScript by its beginning or by having several lines;
/// otherwise a `do shell script` statement around it. Quotes and backslashes stay as they are.
std::string appleScriptSource(std::string_view text);

}  // namespace quillmar
