// Asynchronous method calls on a message bus. Replies arrive on the default main context. Main
// thread.

#pragma once

#include <functional>
#include <string>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

/// Address of a method on the bus.
struct BusMethod {
  const char* destination;
  const char* path;
  const char* interface;
  const char* name;
};

class BusCalls {
 public:
  /// Exactly one argument is not null. The caller of the function owns both.
  using Answer = std::function<void(GVariant* result, const GError* error)>;

  explicit BusCalls(GDBusConnection* connection)
      : connection_(G_DBUS_CONNECTION(g_object_ref(connection))) {}

  /// Pending replies are never delivered.
  ~BusCalls();
  BusCalls(const BusCalls&) = delete;
  BusCalls& operator=(const BusCalls&) = delete;

  /// Calls the method. `arguments` is a tuple; a floating reference is consumed. `resultType` is
  /// the type of a successful reply. Calls to one destination arrive in the order in which they are
  /// made. `descriptors` are passed along with the arguments.
  void call(const BusMethod& method, GVariant* arguments, const char* resultType, Answer answer,
            GUnixFDList* descriptors = nullptr);

  GDBusConnection* connection() const { return connection_.get(); }

 private:
  GObjectPtr<GDBusConnection> connection_;
  GObjectPtr<GCancellable> cancellable_{g_cancellable_new()};
};

/// A method of the bus daemon.
inline constexpr BusMethod busDaemonMethod(const char* name) {
  return {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", name};
}

/// Name of the error on the bus, such as "org.freedesktop.DBus.Error.ServiceUnknown"; empty for a
/// local error.
std::string busErrorName(const GError& error);

/// True if no program provides the service and none can be started for it.
bool isMissingService(const GError& error);

/// True if the reply timed out.
bool isReplyTimeout(const GError& error);

/// The error's message without its D-Bus name and its final full stop.
std::string busErrorMessage(const GError& error);

}  // namespace quillmar
