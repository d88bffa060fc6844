#include "app/unavailable_prompts.h"

namespace quillmar {

void UnavailablePrompts::show(PromptRequest request, PromptCompletion completion) {
  if (notify_) {
    notify_(request.itemTitle, request.placeholder
                                   ? "Asking for a value is not available yet."
                                   : "Asking for a confirmation is not available yet.");
  }
  completion(false, std::nullopt);
}

}  // namespace quillmar
