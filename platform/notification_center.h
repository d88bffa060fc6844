// Notifications inside the process: observers register for a name, and posting the name calls them.
// Main thread.

#pragma once

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <string_view>

namespace quillmar {

class NotificationCenter {
 public:
  /// Keeps an observer registered until destroyed. It may outlive the centre.
  class [[nodiscard]] Observation {
   public:
    Observation() = default;

   private:
    friend class NotificationCenter;
    std::shared_ptr<void> registration_;
  };

  /// The centre that all parts of the application share.
  static NotificationCenter& defaultCenter();

  /// Registers `observer` for `name`. Observers are called in the order of registration.
  Observation addObserver(std::string_view name, std::function<void()> observer);

  /// Calls the observers of the name synchronously. An observer may post, register others and end
  /// observations, including its own. Observers registered during the post are not called.
  void post(std::string_view name);

 private:
  struct Registration {
    std::string name;
    std::function<void()> observer;
  };

  std::list<std::weak_ptr<Registration>> registrations_;
};

}  // namespace quillmar
