#include "platform/linux/bus/session_bus.h"

#include <memory>
#include <utility>

#include <sys/stat.h>
#include <unistd.h>

#include "platform/linux/bus/bus_calls.h"
#include "platform/linux/processes/bounded_wait.h"

namespace quillmar {

namespace {

/// A socket of another user means that the environment was inherited by mistake.
bool isOwnSocket(const std::string& path) {
  struct stat status {};
  return stat(path.c_str(), &status) == 0 && S_ISSOCK(status.st_mode) && status.st_uid == geteuid();
}

struct Attempt {
  std::string address;
  GObjectPtr<GDBusConnection> connection;
  GErrorPtr failure;
};

void connect(Attempt& attempt) {
  const auto flags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  GError* error = nullptr;
  attempt.connection.reset(g_dbus_connection_new_for_address_sync(attempt.address.c_str(), flags,
                                                                  nullptr, nullptr, &error));
  attempt.failure.reset(error);
}

Error describe(const GError& error) {
  if (isReplyTimeout(error)) return {"The session bus does not answer"};
  return {"The session bus cannot be used (" + busErrorMessage(error) + ")"};
}

}  // namespace

std::optional<std::string> sessionBusAddress(const Environment& environment) {
  if (auto address = environment.value("DBUS_SESSION_BUS_ADDRESS"); address && !address->empty()) {
    return address;
  }
  const std::string folder = environment.value("XDG_RUNTIME_DIR").value_or("");
  const std::string socket = folder + "/bus";
  if (folder.empty() || !isOwnSocket(socket)) return std::nullopt;
  return std::string("unix:path=") + GStringPtr(g_dbus_address_escape_value(socket.c_str())).get();
}

Result<GObjectPtr<GDBusConnection>> connectToSessionBus(const Environment& environment,
                                                        std::chrono::milliseconds timeout) {
  std::optional<std::string> address = sessionBusAddress(environment);
  if (!address) return Error{"There is no session bus"};
  // A late attempt continues on its own thread.
  const auto attempt = std::make_shared<Attempt>();
  attempt->address = *std::move(address);
  if (!endsWithin(timeout, [attempt] { connect(*attempt); })) {
    return Error{"The session bus does not answer"};
  }
  if (attempt->failure) return describe(*attempt->failure);
  return std::move(attempt->connection);
}

Result<GVariantPtr> askSessionBus(GDBusConnection* connection, const char* method,
                                  GVariant* arguments, const char* resultType,
                                  std::chrono::milliseconds timeout) {
  const BusMethod bus = busDaemonMethod(method);
  GError* error = nullptr;
  GVariantPtr reply(
      g_dbus_connection_call_sync(connection, bus.destination, bus.path, bus.interface, bus.name,
                                  arguments, G_VARIANT_TYPE(resultType), G_DBUS_CALL_FLAGS_NONE,
                                  static_cast<int>(timeout.count()), nullptr, &error));
  const GErrorPtr failure(error);
  if (failure) return describe(*failure);
  return Result<GVariantPtr>(std::move(reply));
}

}  // namespace quillmar
