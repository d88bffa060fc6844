#include "commands/apple_script_source.h"

#include <algorithm>
#include <array>

#include "platform/text.h"

namespace quillmar {

namespace {

constexpr std::array<std::string_view, 9> scriptBeginnings = {
    "do shell script", "tell ", "set ", "display ", "activate", "get ", "if ", "open ", "beep"};

}  // namespace

std::string appleScriptSource(std::string_view source) {
  const std::string_view trimmed = text::trimWhitespaceAndNewlines(source);
  const bool isScript = text::containsNewline(trimmed) ||
                        std::ranges::any_of(scriptBeginnings, [&](std::string_view beginning) {
                          return trimmed.starts_with(beginning);
                        });
  if (isScript) return std::string(trimmed);
  return "do shell script \"" + std::string(trimmed) + "\"";
}

}  // namespace quillmar
