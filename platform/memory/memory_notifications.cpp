#include "platform/memory/memory_notifications.h"

#include <utility>

namespace quillmar {

void MemoryNotifications::requestAuthorization(AuthorizationOptions options,
                                               std::function<void(bool granted)> completion) {
  authorizationRequests_.push_back(options);
  mainQueue_.async(
      [completion = std::move(completion), granted = permission_] { completion(granted); });
}

void MemoryNotifications::add(UserNotification notification,
                              std::function<void(std::optional<Error>)> completion) {
  if (!error_) {
    const PresentationOptions options = presentation(notification);
    shown_.push_back({std::move(notification), options});
  }
  mainQueue_.async([completion = std::move(completion), error = error_] { completion(error); });
}

}  // namespace quillmar
