// The answer to every question while there is no window to ask it in: a notification that says so,
// and no run.

#pragma once

#include <functional>
#include <string>

#include "platform/prompts.h"

namespace quillmar {

class UnavailablePrompts : public Prompts {
 public:
  /// Posts a notification with a title and a body.
  using Notify = std::function<void(const std::string& title, const std::string& body)>;

  void setNotify(Notify notify) { notify_ = std::move(notify); }

  /// Notifies, titled by the item, and cancels.
  void show(PromptRequest request, PromptCompletion completion) override;

 private:
  Notify notify_;
};

}  // namespace quillmar
