// A fake notification centre that records notifications. Main thread.

#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/task_queue.h"
#include "platform/user_notifications.h"

namespace quillmar {

/// A notification as presented to the user.
struct ShownNotification {
  UserNotification notification;
  PresentationOptions presentation;

  bool operator==(const ShownNotification&) const = default;
};

class MemoryNotifications final : public UserNotificationCenter {
 public:
  /// Completions run on the main queue, which must outlive this object.
  explicit MemoryNotifications(TaskQueue& mainQueue) : mainQueue_(mainQueue) {}

  /// The answer to later authorization requests; initially granted.
  void setPermission(bool granted) { permission_ = granted; }

  /// If set, later notifications are not shown and fail with this error.
  void setError(std::optional<Error> error) { error_ = std::move(error); }

  void requestAuthorization(AuthorizationOptions options,
                            std::function<void(bool granted)> completion) override;

  void add(UserNotification notification,
           std::function<void(std::optional<Error>)> completion) override;

  /// All notifications shown, in order.
  const std::vector<ShownNotification>& shown() const { return shown_; }

  /// The options of all authorization requests, in order.
  const std::vector<AuthorizationOptions>& authorizationRequests() const {
    return authorizationRequests_;
  }

 private:
  TaskQueue& mainQueue_;
  bool permission_ = true;
  std::optional<Error> error_;
  std::vector<ShownNotification> shown_;
  std::vector<AuthorizationOptions> authorizationRequests_;
};

}  // namespace quillmar
