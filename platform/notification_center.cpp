#include "platform/notification_center.h"

#include <utility>
#include <vector>

namespace quillmar {

NotificationCenter& NotificationCenter::defaultCenter() {
  static auto* center = new NotificationCenter;  // Lives as long as the process.
  return *center;
}

NotificationCenter::Observation NotificationCenter::addObserver(std::string_view name,
                                                                std::function<void()> observer) {
  auto registration =
      std::make_shared<Registration>(Registration{std::string(name), std::move(observer)});
  registrations_.push_back(registration);

  Observation observation;
  observation.registration_ = std::move(registration);
  return observation;
}

void NotificationCenter::post(std::string_view name) {
  registrations_.remove_if([](const auto& registration) { return registration.expired(); });

  const std::vector<std::weak_ptr<Registration>> current(registrations_.begin(),
                                                         registrations_.end());
  for (const auto& weak : current) {
    const auto registration = weak.lock();
    if (registration && registration->name == name) registration->observer();
  }
}

}  // namespace quillmar
