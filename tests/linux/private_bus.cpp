#include "tests/linux/private_bus.h"

#include <filesystem>
#include <fstream>
#include <memory>

namespace quillmar {

namespace {

GVariantPtr callBus(GDBusConnection* connection, const char* method, GVariant* arguments) {
  return GVariantPtr(g_dbus_connection_call_sync(
      connection, "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus", method,
      arguments, nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr, nullptr));
}

}  // namespace

PrivateBus::PrivateBus(const std::vector<std::string>& activatable) {
  const GStringPtr folder(g_dir_make_tmp("quillmar-bus-XXXXXX", nullptr));
  folder_ = folder.get();
  for (const auto& name : activatable) {
    std::ofstream(folder_ + "/" + name + ".service")
        << "[D-BUS Service]\nName=" << name << "\nExec=/nonexistent/service\n";
  }
  const std::string configuration = folder_ + "/bus.conf";
  std::ofstream(configuration) << "<busconfig><type>session</type><listen>unix:dir=" << folder_
                               << "</listen><servicedir>" << folder_
                               << "</servicedir><policy context=\"default\">"
                                  "<allow send_destination=\"*\" eavesdrop=\"true\"/>"
                                  "<allow eavesdrop=\"true\"/><allow own=\"*\"/>"
                                  "</policy></busconfig>";
  server_ = std::make_unique<ServerProgram>(
      std::vector<std::string>{"dbus-daemon", "--config-file=" + configuration, "--print-address=3",
                               "--nofork", "--nopidfile"});
}

PrivateBus::~PrivateBus() {
  server_.reset();
  std::error_code ignored;
  std::filesystem::remove_all(folder_, ignored);
}

GObjectPtr<GDBusConnection> PrivateBus::connect() const {
  const auto flags =
      static_cast<GDBusConnectionFlags>(G_DBUS_CONNECTION_FLAGS_AUTHENTICATION_CLIENT |
                                        G_DBUS_CONNECTION_FLAGS_MESSAGE_BUS_CONNECTION);
  return GObjectPtr<GDBusConnection>(
      g_dbus_connection_new_for_address_sync(address().c_str(), flags, nullptr, nullptr, nullptr));
}

bool takeName(GDBusConnection* connection, const char* name) {
  constexpr guint32 doNotQueue = 4;
  constexpr guint32 primaryOwner = 1;
  const auto reply = callBus(connection, "RequestName", g_variant_new("(su)", name, doNotQueue));
  guint32 outcome = 0;
  if (reply) g_variant_get(reply.get(), "(u)", &outcome);
  return outcome == primaryOwner;
}

void releaseName(GDBusConnection* connection, const char* name) {
  callBus(connection, "ReleaseName", g_variant_new("(s)", name));
}

}  // namespace quillmar
