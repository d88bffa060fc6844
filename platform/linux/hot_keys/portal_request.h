// A call of a portal method that replies twice: at once with the path of a request, and later with
// the request's signal Response. Main thread.

#pragma once

#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>

#include <gio/gio.h>

#include "platform/linux/bus/bus_calls.h"
#include "platform/linux/processes/main_loop_task_queue.h"

namespace quillmar {

/// Bus name and object path of the portals.
inline constexpr const char* portalName = "org.freedesktop.portal.Desktop";
inline constexpr const char* portalPath = "/org/freedesktop/portal/desktop";

/// The part of an object path that stands for the connection: ":1.23" becomes "1_23".
std::string portalSenderPath(GDBusConnection* connection);

class PortalRequest {
 public:
  enum class Outcome { success, cancelledByUser, failed };

  /// `results` is a dictionary a{sv}; null if the method failed or its response timed out.
  using Completion = std::function<void(Outcome outcome, GVariant* results)>;

  /// Returns the method's arguments, floating. `handleToken` belongs into the options.
  using Arguments = std::function<GVariant*(const char* handleToken)>;

  /// Absent for a request that may ask the user, who may take any time.
  using Timeout = std::optional<std::chrono::milliseconds>;

  /// Calls a method of the interface GlobalShortcuts. `calls` must outlive the request. The
  /// completion may destroy the request.
  PortalRequest(BusCalls& calls, const char* method, const Arguments& arguments, Timeout timeout,
                Completion completion);

  /// The completion is not called any more.
  ~PortalRequest();
  PortalRequest(const PortalRequest&) = delete;
  PortalRequest& operator=(const PortalRequest&) = delete;

 private:
  static void responseArrived(GDBusConnection*, const char*, const char*, const char*, const char*,
                              GVariant* parameters, gpointer self);

  void finish(Outcome outcome, GVariant* results);

  BusCalls& calls_;
  Completion completion_;
  guint subscription_ = 0;
  MainLoopTaskQueue::Cancel cancelTimeout_;
  std::shared_ptr<int> alive_ = std::make_shared<int>();
};

}  // namespace quillmar
