// Questions to the user: a confirmation, or a value to type. Main thread. Nothing waits: the answer
// comes through a completion.

#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/result.h"

namespace quillmar {

struct PromptRequest {
  std::string title;
  std::string message;
  /// Present for a question with a text field, also when it is empty; absent for a confirmation.
  std::optional<std::string> placeholder;
  std::string confirmTitle;

  bool operator==(const PromptRequest&) const = default;
};

/// `text` is what the field held, absent when the prompt had none.
using PromptCompletion = std::function<void(bool confirmed, std::optional<std::string> text)>;

class Prompts {
 public:
  virtual ~Prompts() = default;

  /// Shows the prompt and returns. Then the completion runs exactly once, on the main thread,
  /// perhaps before this call returns; it never runs when the prompt can't be shown. Several
  /// prompts may be open at once.
  virtual Result<void> show(PromptRequest request, PromptCompletion completion) = 0;
};

}  // namespace quillmar
