// Announcements inside the process: whoever posts a name needs not know who listens. Main thread.

#pragma once

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <string_view>

namespace quillmar {

class NotificationCenter {
 public:
  /// Keeps an observer registered for as long as it lives; it may outlive the centre.
  class [[nodiscard]] Observation {
   public:
    Observation() = default;

   private:
    friend class NotificationCenter;
    std::shared_ptr<void> registration_;
  };

  /// The centre that the application's parts share.
  static NotificationCenter& defaultCenter();

  /// Has `observer` called at every post of `name`, after the observers registered before it.
  Observation addObserver(std::string_view name, std::function<void()> observer);

  /// Calls the observers of the name, one after another, before it returns. They may post, register
  /// and end observations, their own included; one that is registered meanwhile is not called.
  void post(std::string_view name);

 private:
  struct Registration {
    std::string name;
    std::function<void()> observer;
  };

  std::list<std::weak_ptr<Registration>> registrations_;
};

}  // namespace quillmar
