#include "platform/linux/bus/run_later.h"

#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/linux/bus_client.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/private_bus.h"

namespace quillmar {
namespace {

class RunLaterTest : public testing::Test {
 protected:
  MainLoopTaskQueue::Cancel run(std::chrono::milliseconds delay) {
    return runLater(connection.get(), delay, [this] { events.emplace_back("task"); });
  }

  PrivateBus bus;
  GObjectPtr<GDBusConnection> connection = bus.connect();
  std::vector<std::string> events;
};

TEST_F(RunLaterTest, RunsOnceTheDelayIsOver) {
  run(std::chrono::milliseconds(1));
  runMainLoopUntil([&] { return !events.empty(); });
  settle(connection.get());
  EXPECT_THAT(events, testing::ElementsAre("task"));
}

TEST_F(RunLaterTest, WhatArrivedWhileTheMainLoopWasHeldUpComesFirst) {
  constexpr const char* name = "com.example.Panel";
  const guint watch = g_bus_watch_name_on_connection(
      connection.get(), name, G_BUS_NAME_WATCHER_FLAGS_NONE,
      [](GDBusConnection*, const char*, const char*, gpointer list) {
        static_cast<std::vector<std::string>*>(list)->emplace_back("panel");
      },
      nullptr, &events, nullptr);
  settle(connection.get());

  run(std::chrono::milliseconds(0));
  const GObjectPtr<GDBusConnection> panel = bus.connect();
  const GVariantPtr reply(g_dbus_connection_call_sync(
      panel.get(), "org.freedesktop.DBus", "/org/freedesktop/DBus", "org.freedesktop.DBus",
      "RequestName", g_variant_new("(su)", name, 0), nullptr, G_DBUS_CALL_FLAGS_NONE, -1, nullptr,
      nullptr));
  ASSERT_TRUE(reply);
  runMainLoopUntil([&] { return events.size() == 2; });
  EXPECT_THAT(events, testing::ElementsAre("panel", "task"));
  g_bus_unwatch_name(watch);
}

TEST_F(RunLaterTest, CanBeCancelledDuringTheDelay) {
  const auto cancel = run(std::chrono::milliseconds(0));
  cancel();
  settle(connection.get());
  EXPECT_THAT(events, testing::IsEmpty());
}

TEST_F(RunLaterTest, CanBeCancelledWhileTheBusIsHeard) {
  const auto cancel = run(std::chrono::milliseconds(0));
  // The end of the delay; the answer of the bus takes another turn.
  g_main_context_iteration(nullptr, TRUE);
  cancel();
  settle(connection.get());
  EXPECT_THAT(events, testing::IsEmpty());
}

TEST_F(RunLaterTest, MayBeCancelledAfterwards) {
  const auto cancel = run(std::chrono::milliseconds(0));
  runMainLoopUntil([&] { return !events.empty(); });
  cancel();
  cancel();
  EXPECT_THAT(events, testing::ElementsAre("task"));
}

TEST_F(RunLaterTest, RunsOnABusThatHasGone) {
  run(std::chrono::milliseconds(0));
  g_dbus_connection_close_sync(connection.get(), nullptr, nullptr);
  EXPECT_TRUE(runMainLoopUntil([&] { return !events.empty(); }));
}

}  // namespace
}  // namespace quillmar
