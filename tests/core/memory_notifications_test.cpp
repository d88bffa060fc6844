#include "platform/memory/memory_notifications.h"

#include <deque>
#include <utility>

#include <gtest/gtest.h>

#include "tests/conformance/user_notifications_conformance.h"

namespace quillmar {
namespace {

class Line final : public TaskQueue {
 public:
  void async(Task task) override { tasks_.push_back(std::move(task)); }

  bool runUntil(const std::function<bool()>& done) {
    while (!done() && !tasks_.empty()) {
      const Task task = std::move(tasks_.front());
      tasks_.pop_front();
      task();
    }
    return done();
  }

 private:
  std::deque<Task> tasks_;
};

class MemoryNotificationsBackend {
 public:
  UserNotificationCenter& center() { return center_; }

  void stopService() {
    center_.setPermission(false);
    center_.setError(Error{"No notification service is running and none can be started."});
  }

  bool runUntil(const std::function<bool()>& done) { return line_.runUntil(done); }

  std::vector<ShownInConformance> shown() {
    std::vector<ShownInConformance> list;
    for (const auto& [notification, presentation] : center_.shown()) {
      list.push_back({notification.title, notification.body,
                      notification.sound != NotificationSound::none && presentation.sound});
    }
    return list;
  }

 private:
  Line line_;
  MemoryNotifications center_{line_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, UserNotificationsConformance, MemoryNotificationsBackend);

TEST(MemoryNotifications, RemembersWhatPermissionWasAskedFor) {
  Line line;
  MemoryNotifications center(line);
  center.requestAuthorization({.alert = true, .badge = true}, [](bool) {});
  EXPECT_EQ(center.authorizationRequests(),
            (std::vector<AuthorizationOptions>{{.alert = true, .badge = true}}));
}

}  // namespace
}  // namespace quillmar
