// A fake pasteboard that records its contents.

#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/pasteboard.h"

namespace quillmar {

class MemoryPasteboard final : public Pasteboard {
 public:
  void setString(std::string text) override { history_.push_back(std::move(text)); }

  /// The current contents; absent before the first text.
  std::optional<std::string> string() const {
    if (history_.empty()) return std::nullopt;
    return history_.back();
  }

  /// All texts that were set, in order.
  const std::vector<std::string>& history() const { return history_; }

 private:
  std::vector<std::string> history_;
};

}  // namespace quillmar
