// A fake login item. Tests change it as the user or another program would.

#pragma once

#include <optional>

#include "platform/login_item.h"

namespace quillmar {

class MemoryLoginItem final : public LoginItem {
 public:
  /// If set, registering and unregistering fail with this error.
  std::optional<Error> error;

  /// The item as another program has written it. It starts this program.
  void writeAsSomeoneElse() {
    isOurs_ = false;
    status_ = LoginItemStatus::enabled;
  }

  /// Switches an existing item off.
  void switchOff() { status_ = LoginItemStatus::requiresApproval; }

  /// Removes the program that an existing item starts.
  void removeProgram() { status_ = LoginItemStatus::notFound; }

  LoginItemStatus status() const override { return status_; }

  Result<void> registerItem() override {
    if (status_ == LoginItemStatus::enabled) return {};
    if (error) return *error;
    if (status_ == LoginItemStatus::requiresApproval) return Error{"The login item is off."};
    if (!isOurs_) return Error{"The login item belongs to someone else."};
    status_ = LoginItemStatus::enabled;
    return {};
  }

  Result<void> unregisterItem() override {
    const bool isKept = status_ == LoginItemStatus::requiresApproval ||
                        (!isOurs_ && status_ == LoginItemStatus::notFound);
    if (isKept || status_ == LoginItemStatus::notRegistered) return {};
    if (error) return *error;
    if (!isOurs_) return Error{"The login item belongs to someone else."};
    status_ = LoginItemStatus::notRegistered;
    return {};
  }

 private:
  LoginItemStatus status_ = LoginItemStatus::notRegistered;
  bool isOurs_ = true;
};

}  // namespace quillmar
