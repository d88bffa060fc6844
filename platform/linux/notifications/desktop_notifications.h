// Notifications through the desktop's notification service, org.freedesktop.Notifications,
// whichever program provides it. Main thread; nothing waits for the service.
//
// Whether the service takes bodies for markup is asked once for each program that provides it,
// before the first notification; requests that come meanwhile wait in line.

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

  /// Completions that have not come yet never do.
  ~DesktopNotifications() override;

  /// Granted when a service runs or can be started.
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
  /// Known for the present provider of the service.
  std::optional<bool> bodyIsMarkup_;
  bool asking_ = false;
  /// Sent and not answered yet. Buses refuse a program that has too many such calls, so a burst
  /// waits in line.
  std::size_t unanswered_ = 0;
  std::deque<Request> waiting_;
};

}  // namespace quillmar
