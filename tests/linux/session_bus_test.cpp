#include "platform/linux/bus/session_bus.h"

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/linux/main_loop.h"
#include "tests/linux/private_bus.h"
#include "tests/linux/silent_socket.h"

namespace quillmar {
namespace {

using testing::Optional;

Environment withAddress(const std::string& address) {
  return {{{"DBUS_SESSION_BUS_ADDRESS", address}}};
}

TEST(SessionBusAddress, IsWhatTheEnvironmentSays) {
  const SilentSocket socket("bus");
  EXPECT_THAT(sessionBusAddress({{{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/some/bus"},
                                  {"XDG_RUNTIME_DIR", socket.folder()}}}),
              Optional(std::string("unix:path=/some/bus")));
}

TEST(SessionBusAddress, IsTheSocketInTheRuntimeFolderOtherwise) {
  const SilentSocket socket("bus");
  const std::string expected = "unix:path=" + socket.folder() + "/bus";
  EXPECT_THAT(sessionBusAddress({{{"XDG_RUNTIME_DIR", socket.folder()}}}), Optional(expected));
  EXPECT_THAT(
      sessionBusAddress({{{"DBUS_SESSION_BUS_ADDRESS", ""}, {"XDG_RUNTIME_DIR", socket.folder()}}}),
      Optional(expected));
}

TEST(SessionBusAddress, IsAbsentWithoutASocket) {
  const SilentSocket socket("other");
  std::ofstream(socket.folder() + "/bus") << "no socket";
  EXPECT_EQ(sessionBusAddress({{{"XDG_RUNTIME_DIR", socket.folder()}}}), std::nullopt);
  EXPECT_EQ(sessionBusAddress({{{"XDG_RUNTIME_DIR", "/nonexistent"}}}), std::nullopt);
  EXPECT_EQ(sessionBusAddress({{{"DISPLAY", ":0"}}}), std::nullopt);
}

TEST(SessionBus, IsConnectedTo) {
  const PrivateBus bus;
  const auto connection = connectToSessionBus(withAddress(bus.address()));
  ASSERT_TRUE(connection) << connection.error().description;
  EXPECT_FALSE(g_dbus_connection_get_exit_on_close(connection.value().get()));
  EXPECT_TRUE(askSessionBus(connection.value().get(), "GetId", nullptr, "(s)"));
}

TEST(SessionBus, IsNotStartedWhenThereIsNone) {
  const auto connection = connectToSessionBus({{{"DISPLAY", ":0"}}});
  ASSERT_FALSE(connection);
  EXPECT_EQ(connection.error().description, "There is no session bus");
}

TEST(SessionBus, AnUnusableBusIsReportedWithTheReason) {
  const auto connection = connectToSessionBus(withAddress("unix:path=/nonexistent/bus"));
  ASSERT_FALSE(connection);
  EXPECT_EQ(connection.error().description,
            "The session bus cannot be used (Could not connect: No such file or directory)");
}

TEST(SessionBus, ThatNeverAnswersIsNotWaitedForLongerThanAllowed) {
  const SilentSocket socket("bus");
  const auto connection =
      connectToSessionBus({{{"XDG_RUNTIME_DIR", socket.folder()}}}, std::chrono::milliseconds(50));
  ASSERT_FALSE(connection);
  EXPECT_EQ(connection.error().description, "The session bus does not answer");
}

TEST(SessionBus, ThatStopsAnsweringIsNotWaitedForLongerThanAllowed) {
  PrivateBus bus;
  const auto connection = bus.connect();
  bus.signal(SIGSTOP);
  const auto reply =
      askSessionBus(connection.get(), "GetId", nullptr, "(s)", std::chrono::milliseconds(50));
  ASSERT_FALSE(reply);
  EXPECT_EQ(reply.error().description, "The session bus does not answer");
}

}  // namespace
}  // namespace quillmar
