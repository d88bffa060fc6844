// Questions asked on the terminal, or answered beforehand by options.

#pragma once

#include <optional>
#include <string>

#include "cli/console.h"
#include "commands/prompts.h"
#include "platform/result.h"

namespace quillmar {

class TerminalPrompts : public Prompts {
 public:
  /// `assumeYes` answers confirmations, `input` the question for a value. The console is not owned.
  TerminalPrompts(Console& console, bool assumeYes, std::optional<std::string> input);

  /// Asks and waits for the answer. Without a terminal and without the option that answers, the
  /// prompt is cancelled.
  Result<void> show(PromptRequest request, PromptCompletion completion) override;

 private:
  bool confirm(const PromptRequest& request);
  std::optional<std::string> askForValue(const PromptRequest& request);

  Console& console_;
  bool assumeYes_;
  std::optional<std::string> input_;
};

}  // namespace quillmar
