// Notifications to the user, shown by the desktop's notification service. Main thread; completions
// come on the main thread, later.

#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/result.h"

namespace quillmar {

enum class NotificationSound { none, standard };

/// A request to show one notification now. Texts are plain UTF-8, never markup.
struct UserNotification {
  /// Unique for each request.
  std::string identifier;
  std::string title;
  std::string body;
  NotificationSound sound = NotificationSound::standard;

  bool operator==(const UserNotification&) const = default;
};

/// What the application may do with notifications.
struct AuthorizationOptions {
  bool alert = false;
  bool sound = false;
  bool badge = false;

  bool operator==(const AuthorizationOptions&) const = default;
};

/// How a notification is presented while the application itself is frontmost.
struct PresentationOptions {
  bool banner = false;
  bool list = false;
  bool sound = false;

  bool operator==(const PresentationOptions&) const = default;
};

class UserNotificationCenterDelegate {
 public:
  virtual ~UserNotificationCenterDelegate() = default;

  virtual PresentationOptions willPresent(const UserNotification& notification) = 0;
};

class UserNotificationCenter {
 public:
  virtual ~UserNotificationCenter() = default;

  /// The delegate is not owned and must outlive the centre or be taken away with nullptr.
  void setDelegate(UserNotificationCenterDelegate* delegate) { delegate_ = delegate; }

  /// Asks whether notifications can be shown, without starting anything or waiting.
  virtual void requestAuthorization(AuthorizationOptions options,
                                    std::function<void(bool granted)> completion) = 0;

  /// Shows the notification. Requests are shown in the order in which they were added. The
  /// completion gets the service's error, or nothing when it took the request.
  virtual void add(UserNotification notification,
                   std::function<void(std::optional<Error>)> completion) = 0;

 protected:
  /// How to present the notification: as the delegate says, in full without one.
  PresentationOptions presentation(const UserNotification& notification) const {
    if (delegate_) return delegate_->willPresent(notification);
    return {.banner = true, .list = true, .sound = true};
  }

 private:
  UserNotificationCenterDelegate* delegate_ = nullptr;
};

}  // namespace quillmar
