// Prompts to the user: a confirmation, or a value to enter. They do not block; the answer is passed
// to a completion. Main thread.

#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/result.h"

namespace quillmar {

struct PromptRequest {
  std::string title;
  std::string message;
  /// Present, possibly empty, for a prompt with a text field; absent for a confirmation.
  std::optional<std::string> placeholder;
  std::string confirmTitle;

  bool operator==(const PromptRequest&) const = default;
};

/// `text` is the text of the field; absent if the prompt has none.
using PromptCompletion = std::function<void(bool confirmed, std::optional<std::string> text)>;

class Prompts {
 public:
  virtual ~Prompts() = default;

  /// Shows the prompt and returns. The completion runs exactly once, on the main thread, possibly
  /// before this call returns. It never runs if the call fails. Several prompts may be open at
  /// once.
  virtual Result<void> show(PromptRequest request, PromptCompletion completion) = 0;
};

}  // namespace quillmar
