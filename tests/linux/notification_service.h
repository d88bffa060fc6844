// A notification service that shows nothing and remembers everything. Its calls arrive while the
// main loop runs.

#pragma once

#include <map>
#include <string>
#include <vector>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"
#include "tests/linux/private_bus.h"

namespace quillmar {

/// One call of Notify.
struct NotifyCall {
  std::string application;
  unsigned replaces = 0;
  std::string icon;
  std::string summary;
  std::string body;
  std::size_t actionCount = 0;
  /// The values as GLib prints them.
  std::map<std::string, std::string> hints;
  int timeout = 0;
};

class NotificationService {
 public:
  /// Provides the service from now on, as a program of its own on the bus.
  NotificationService(const PrivateBus& bus, std::vector<std::string> capabilities);

  /// Leaves the bus, without an answer to what it was asked meanwhile.
  ~NotificationService();
  NotificationService(const NotificationService&) = delete;
  NotificationService& operator=(const NotificationService&) = delete;

  /// Refuses what comes from now on, with this message; not with an empty one.
  void refuse(std::string message) { refusal_ = std::move(message); }

  /// Does not answer any more.
  void hang() { hangs_ = true; }

  const std::vector<NotifyCall>& notifyCalls() const { return notifyCalls_; }
  int capabilityCalls() const { return capabilityCalls_; }

 private:
  void handle(const std::string& method, GVariant* arguments, GDBusMethodInvocation* invocation);
  GVariant* capabilityList() const;

  GObjectPtr<GDBusConnection> connection_;
  guint registration_ = 0;
  std::vector<std::string> capabilities_;
  std::string refusal_;
  bool hangs_ = false;
  std::vector<GObjectPtr<GDBusMethodInvocation>> unanswered_;
  std::vector<NotifyCall> notifyCalls_;
  int capabilityCalls_ = 0;
};

}  // namespace quillmar
