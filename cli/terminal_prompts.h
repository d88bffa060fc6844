// Prompts on the terminal. Options can answer them in advance.

#pragma once

#include <optional>
#include <string>

#include "cli/console.h"
#include "commands/prompts.h"
#include "platform/result.h"

namespace quillmar {

class TerminalPrompts : public Prompts {
 public:
  /// `assumeYes` answers confirmations, `input` the question for a value. `console` must outlive
  /// the object.
  TerminalPrompts(Console& console, bool assumeYes, std::optional<std::string> input);

  /// Asks and waits for the answer. Cancels the prompt if neither an option nor a terminal can
  /// answer it.
  Result<void> show(PromptRequest request, PromptCompletion completion) override;

 private:
  bool confirm(const PromptRequest& request);
  std::optional<std::string> askForValue(const PromptRequest& request);

  Console& console_;
  bool assumeYes_;
  std::optional<std::string> input_;
};

}  // namespace quillmar
