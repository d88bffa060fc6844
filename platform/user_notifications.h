// Notifications to the user, shown by the desktop's notification service. Main thread. Completions
// run later, on the main thread.

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

/// The permissions that the application requests.
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

  /// The delegate is not owned. It must outlive the centre or be removed with nullptr.
  void setDelegate(UserNotificationCenterDelegate* delegate) { delegate_ = delegate; }

  /// Requests permission to show notifications. Does not block and does not start the service.
  virtual void requestAuthorization(AuthorizationOptions options,
                                    std::function<void(bool granted)> completion) = 0;

  /// Shows the notification. Requests are shown in the order in which they were added. The
  /// completion receives the service's error, or nothing if the service accepted the request.
  virtual void add(UserNotification notification,
                   std::function<void(std::optional<Error>)> completion) = 0;

 protected:
  /// How to present the notification: decided by the delegate; in full if there is none.
  PresentationOptions presentation(const UserNotification& notification) const {
    if (delegate_) return delegate_->willPresent(notification);
    return {.banner = true, .list = true, .sound = true};
  }

 private:
  UserNotificationCenterDelegate* delegate_ = nullptr;
};

}  // namespace quillmar
