#include "cli/terminal_prompts.h"

#include <algorithm>
#include <optional>
#include <string>
#include <utility>

namespace quillmar {

namespace {

std::string lowerCased(std::string text) {
  std::ranges::transform(text, text.begin(), [](char character) {
    return character >= 'A' && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
  });
  return text;
}

bool meansYes(const std::string& answer) {
  const std::string word = lowerCased(answer);
  return word == "y" || word == "yes";
}

}  // namespace

TerminalPrompts::TerminalPrompts(Console& console, bool assumeYes, std::optional<std::string> input)
    : console_(console), assumeYes_(assumeYes), input_(std::move(input)) {}

Result<void> TerminalPrompts::show(PromptRequest request, PromptCompletion completion) {
  if (request.placeholder) {
    std::optional<std::string> value = askForValue(request);
    const bool confirmed = value.has_value();
    completion(confirmed, std::move(value));
  } else {
    completion(confirm(request), std::nullopt);
  }
  return {};
}

bool TerminalPrompts::confirm(const PromptRequest& request) {
  if (assumeYes_) return true;
  if (!console_.isInteractive()) return false;
  console_.printError(printable(request.title) + "\n" + printableLines(request.message) +
                      "\nType y to run it: ");
  const std::optional<std::string> answer = console_.readLine();
  return answer && meansYes(*answer);
}

std::optional<std::string> TerminalPrompts::askForValue(const PromptRequest& request) {
  if (input_) return input_;
  if (!console_.isInteractive()) return std::nullopt;
  console_.printError(printable(request.title) + "\n" + printableLines(request.message) + ": ");
  return console_.readLine();
}

}  // namespace quillmar
