#include "tests/linux/bus_client.h"

#include <utility>

#include "tests/linux/main_loop.h"

namespace quillmar {

BusReply callOnBus(GDBusConnection* connection, const BusAddress& address, const char* method,
                   GVariant* arguments) {
  struct Pending {
    BusReply reply;
    bool done = false;
  } pending;
  const auto finish = [](GObject* source, GAsyncResult* result, gpointer data) {
    auto& waiting = *static_cast<Pending*>(data);
    GError* error = nullptr;
    waiting.reply.value.reset(
        g_dbus_connection_call_finish(G_DBUS_CONNECTION(source), result, &error));
    const GErrorPtr owned(error);
    if (error) {
      const GStringPtr name(g_dbus_error_get_remote_error(error));
      waiting.reply.errorName = name ? name.get() : "local";
      g_dbus_error_strip_remote_error(error);
      waiting.reply.errorMessage = error->message;
    }
    waiting.done = true;
  };
  g_dbus_connection_call(connection, address.destination.c_str(), address.path.c_str(),
                         address.interface.c_str(), method, arguments, nullptr,
                         G_DBUS_CALL_FLAGS_NO_AUTO_START, G_MAXINT, nullptr, finish, &pending);
  runMainLoopUntil([&] { return pending.done; });
  return std::move(pending.reply);
}

GVariantPtr readPropertyOnBus(GDBusConnection* connection, const BusAddress& address,
                              const char* property) {
  const BusReply reply =
      callOnBus(connection, {address.destination, address.path, "org.freedesktop.DBus.Properties"},
                "Get", g_variant_new("(ss)", address.interface.c_str(), property));
  if (!reply.value) return nullptr;
  const GVariantPtr boxed(g_variant_get_child_value(reply.value.get(), 0));
  return GVariantPtr(g_variant_get_variant(boxed.get()));
}

void settle(GDBusConnection* connection) {
  callOnBus(connection,
            {"org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus.Peer"}, "Ping",
            nullptr);
}

}  // namespace quillmar
