// A fake interpreter that records scripts and returns a preset outcome.

#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/apple_script.h"

namespace quillmar {

struct MemoryAppleScriptEngine final : AppleScriptEngine {
  using Outcome = Result<std::optional<std::string>, AppleScriptError>;

  /// If absent, makeScript() fails.
  std::optional<Outcome> outcome = Outcome(std::optional<std::string>("done"));
  std::vector<std::string> executed;

  std::unique_ptr<AppleScript> makeScript(const std::string& source) override {
    if (!outcome) return nullptr;
    class Script final : public AppleScript {
     public:
      Script(MemoryAppleScriptEngine& owner, std::string text)
          : owner_(owner), text_(std::move(text)) {}
      Outcome execute() override {
        owner_.executed.push_back(text_);
        return *owner_.outcome;
      }

     private:
      MemoryAppleScriptEngine& owner_;
      std::string text_;
    };
    return std::make_unique<Script>(*this, source);
  }
};

}  // namespace quillmar
