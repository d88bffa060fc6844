// Method calls on a message bus whose answers come later, on the default main context. Main thread.

#pragma once

#include <functional>
#include <string>

#include <gio/gio.h>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

/// Where a method is found.
struct BusMethod {
  const char* destination;
  const char* path;
  const char* interface;
  const char* name;
};

class BusCalls {
 public:
  /// Exactly one of the two is there; both belong to the caller of this function.
  using Answer = std::function<void(GVariant* result, const GError* error)>;

  explicit BusCalls(GDBusConnection* connection)
      : connection_(G_DBUS_CONNECTION(g_object_ref(connection))) {}

  /// Answers that are still out are never delivered.
  ~BusCalls();
  BusCalls(const BusCalls&) = delete;
  BusCalls& operator=(const BusCalls&) = delete;

  /// Calls the method; `arguments` is a tuple, taken over when floating, and `resultType` the type
  /// of a good answer. Calls to one destination arrive in the order in which they were made.
  void call(const BusMethod& method, GVariant* arguments, const char* resultType, Answer answer);

  GDBusConnection* connection() const { return connection_.get(); }

 private:
  GObjectPtr<GDBusConnection> connection_;
  GObjectPtr<GCancellable> cancellable_{g_cancellable_new()};
};

/// The bus itself.
inline constexpr BusMethod busItself(const char* name) {
  return {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", name};
}

/// The name of the error on the bus, such as "org.freedesktop.DBus.Error.ServiceUnknown"; empty for
/// an error of this side.
std::string busErrorName(const GError& error);

/// True when nobody provides the service and nobody can be started for it.
bool isMissingService(const GError& error);

/// True when no answer came in time.
bool isMissingAnswer(const GError& error);

/// The error's message without its name on the bus and without a full stop at its end.
std::string busErrorMessage(const GError& error);

}  // namespace quillmar
