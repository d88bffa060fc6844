// A notification centre that remembers what it would have shown. Main thread.

#pragma once

#include <functional>
#include <optional>
#include <vector>

#include "platform/task_queue.h"
#include "platform/user_notifications.h"

namespace quillmar {

/// A notification as the user would have seen it.
struct ShownNotification {
  UserNotification notification;
  PresentationOptions presentation;

  bool operator==(const ShownNotification&) const = default;
};

class MemoryNotifications final : public UserNotificationCenter {
 public:
  /// Completions run on the main queue, which must outlive this.
  explicit MemoryNotifications(TaskQueue& mainQueue) : mainQueue_(mainQueue) {}

  /// What later questions for permission are answered; granted at first.
  void setPermission(bool granted) { permission_ = granted; }

  /// What becomes of later notifications: with an error none is shown.
  void setError(std::optional<Error> error) { error_ = std::move(error); }

  void requestAuthorization(AuthorizationOptions options,
                            std::function<void(bool granted)> completion) override;

  void add(UserNotification notification,
           std::function<void(std::optional<Error>)> completion) override;

  /// Everything shown, in order.
  const std::vector<ShownNotification>& shown() const { return shown_; }

  /// The options of every request for permission, in order.
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
