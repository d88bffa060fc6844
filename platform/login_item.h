// Starting the program at login. The user and the desktop can change the login item at any time, so
// nothing is cached. Main thread.

#pragma once

#include "platform/result.h"

namespace quillmar {

enum class LoginItemStatus {
  /// The program starts at login.
  enabled,
  /// There is no login item, or unregisterItem() has switched it off.
  notRegistered,
  /// There is one, but it is switched off, or it starts something else. Only the user can change
  /// that.
  requiresApproval,
  /// There is one, but the program that it starts does not exist.
  notFound,
};

class LoginItem {
 public:
  virtual ~LoginItem() = default;

  virtual LoginItemStatus status() const = 0;

  /// Makes the program start at login. Succeeds if it does already. Fails if the login item was
  /// switched off or written by someone else; such an item is kept.
  virtual Result<void> registerItem() = 0;

  /// Keeps the program from starting at login. Succeeds if it does not start. Fails if someone else
  /// wrote the user's login item; such an item is kept.
  virtual Result<void> unregisterItem() = 0;
};

}  // namespace quillmar
