// Questions that wait until a test answers them.

#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/prompts.h"

namespace quillmar {

struct MemoryPrompts final : Prompts {
  /// The prompts shown and not answered yet, in order.
  std::vector<std::pair<PromptRequest, PromptCompletion>> open;

  void show(PromptRequest request, PromptCompletion completion) override {
    open.emplace_back(std::move(request), std::move(completion));
  }

  /// Answers the oldest open prompt.
  void answer(bool confirmed, std::optional<std::string> text = std::nullopt) {
    PromptCompletion completion = std::move(open.front().second);
    open.erase(open.begin());
    completion(confirmed, std::move(text));
  }
};

}  // namespace quillmar
