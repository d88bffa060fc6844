// Notifications through the desktop's notification service, org.freedesktop.Notifications. Main
// thread; calls to the service never block.
//
// Whether the service parses bodies as markup is asked once for each program that owns its name,
// before the first notification; requests are queued meanwhile.

#pragma once

#include <cstddef>
#include <deque>
#include <functional>
#include <optional>

#include <gio/gio.h>

#include "platform/linux/bus/bus_calls.h"
#include "platform/user_notifications.h"

namespace quillmar {

class DesktopNotifications final : public UserNotificationCenter {
 public:
  explicit DesktopNotifications(GDBusConnection* sessionBus);

  /// Pending completions are never called.
  ~DesktopNotifications() override;

  /// Granted if a service is running or can be started.
  void requestAuthorization(AuthorizationOptions options,
                            std::function<void(bool granted)> completion) override;

  void add(UserNotification notification,
           std::function<void(std::optional<Error>)> completion) override;

 private:
  struct Request {
    UserNotification notification;
    bool withSound;
    std::function<void(std::optional<Error>)> completion;
  };

  void sendOrAsk();
  void askForCapabilities();
  void capabilitiesArrived(GVariant* result, const GError* error);
  void sendWaiting(bool bodyIsMarkup);
  void failWaiting(const Error& error);
  void notify(Request request, bool bodyIsMarkup);

  BusCalls calls_;
  guint ownerWatch_ = 0;
  /// Absent until the current owner of the name has answered.
  std::optional<bool> bodyIsMarkup_;
  bool asking_ = false;
  /// Calls without a reply yet. Buses limit these, so a burst of notifications is queued.
  std::size_t unanswered_ = 0;
  std::deque<Request> waiting_;
};

}  // namespace quillmar
