#include "platform/linux/application/application_instance.h"

#include <csignal>
#include <cstdio>
#include <deque>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/application/running_instance.h"
#include "tests/linux/child_programs.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/private_bus.h"

namespace quillmar {
namespace {

class TaskLine final : public TaskQueue {
 public:
  void async(Task task) override { tasks_.push_back(std::move(task)); }
  void run() {
    for (const auto& task : std::exchange(tasks_, {})) task();
  }

 private:
  std::deque<Task> tasks_;
};

/// A session bus, on which the tests' other process may run an instance.
class InstanceTest : public testing::Test {
 protected:
  InstanceTest() {
    const GStringPtr folder(g_dir_make_tmp("quillmar-instance-XXXXXX", nullptr));
    folder_ = folder.get();
    g_setenv("DBUS_SESSION_BUS_ADDRESS", bus_.address().c_str(), true);
  }

  ~InstanceTest() override {
    // What is left to do holds this test's bus, which the next test would get.
    runMainLoopWhileReady();
    std::remove(record().c_str());
    std::remove(folder_.c_str());
  }

  std::string record() const { return folder_ + "/record"; }

  void startOther() {
    other_.emplace(std::vector<std::string>{INSTANCE_PROGRAM, record()},
                   std::vector<std::string>{"DBUS_SESSION_BUS_ADDRESS=" + bus_.address()});
  }

  /// What the other process was asked for.
  std::string recorded() const {
    std::ifstream in(record());
    return {std::istreambuf_iterator<char>(in), {}};
  }

  std::string folder_;
  PrivateBus bus_;
  GObjectPtr<GDBusConnection> connection_ = bus_.connect();
  std::optional<ServerProgram> other_;
  RunningInstance running_{connection_.get()};
  LeftOut leftOut_;
};

TEST_F(InstanceTest, TheFirstOneRunsAndOwnsTheName) {
  ApplicationInstance instance({});
  EXPECT_FALSE(running_.isRunning());
  EXPECT_EQ(instance.start(), ApplicationInstance::Start::running);
  EXPECT_NE(instance.connection(), nullptr);
  EXPECT_TRUE(running_.isRunning());
}

TEST_F(InstanceTest, TheSecondOneLearnsOfTheFirst) {
  startOther();
  ApplicationInstance instance({});
  EXPECT_EQ(instance.start(), ApplicationInstance::Start::alreadyRunning);
}

TEST_F(InstanceTest, TheNameIsFreeAfterTheEnd) {
  startOther();
  EXPECT_EQ(other_->end(SIGTERM), 0);
  EXPECT_FALSE(running_.isRunning());
}

TEST_F(InstanceTest, AnInterruptEndsItInOrderToo) {
  startOther();
  EXPECT_EQ(other_->end(SIGINT), 0);
}

TEST_F(InstanceTest, TheEndOfTheSessionEndsItInOrder) {
  startOther();
  bus_.kill();
  EXPECT_EQ(other_->end(0), 0);
}

TEST_F(InstanceTest, WithoutASessionBusItRunsAllTheSame) {
  g_setenv("DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus", true);
  ApplicationInstance instance({});
  EXPECT_EQ(instance.start(), ApplicationInstance::Start::noSessionBus);
  EXPECT_EQ(instance.connection(), nullptr);
  g_idle_add(
      [](gpointer self) -> gboolean {
        static_cast<ApplicationInstance*>(self)->terminate();
        return G_SOURCE_REMOVE;
      },
      &instance);
  EXPECT_EQ(instance.run(), 0);
}

TEST_F(InstanceTest, AnotherInstanceThatDoesNotAnswerIsRunningAllTheSame) {
  const auto busy = bus_.connect();
  ASSERT_TRUE(takeName(busy.get(), applicationId));
  ApplicationInstance instance({});
  // Nobody answers for the other instance while this one starts: that would be in this thread.
  EXPECT_EQ(instance.start(), ApplicationInstance::Start::alreadyRunning);
}

TEST_F(InstanceTest, TerminatedBeforeItRunsItEndsAtOnce) {
  ApplicationInstance instance({});
  instance.terminate();
  EXPECT_EQ(instance.run(), 0);
}

TEST_F(InstanceTest, GetsTheTextForTheClipboard) {
  startOther();
  RemotePasteboard(running_, leftOut_).setString("naïve <text>");
  EXPECT_EQ(recorded(), "clipboard naïve <text>\n");
  EXPECT_EQ(leftOut_.sentence(), std::nullopt);
}

TEST_F(InstanceTest, GetsMegabytesForTheClipboard) {
  startOther();
  const std::string text(5'000'000, 'x');
  RemotePasteboard(running_, leftOut_).setString(text);
  EXPECT_TRUE(recorded() == "clipboard " + text + "\n");
}

TEST_F(InstanceTest, GetsNotifications) {
  startOther();
  TaskLine line;
  RemoteNotifications center(running_, leftOut_, line);
  std::optional<bool> granted;
  center.requestAuthorization({.alert = true}, [&](bool answer) { granted = answer; });
  int completions = 0;
  center.add({"1", "Title", "Body & more"}, [&](std::optional<Error> error) {
    EXPECT_EQ(error, std::nullopt);
    ++completions;
  });
  EXPECT_EQ(completions, 0);
  line.run();
  EXPECT_EQ(completions, 1);
  EXPECT_EQ(granted, true);
  EXPECT_EQ(recorded(), "notify Title|Body & more\n");
}

TEST_F(InstanceTest, WhatABusCannotCarryIsReplaced) {
  startOther();
  RemotePasteboard(running_, leftOut_).setString(std::string("a\0b", 3));
  EXPECT_EQ(recorded(), "clipboard a\uFFFDb\n");
}

TEST_F(InstanceTest, WithoutAnInstanceTheRecordSaysWhatWasLeftOut) {
  RemotePasteboard(running_, leftOut_).setString("text");
  EXPECT_EQ(leftOut_.sentence(),
            "Quillmar is not running, so the output was not copied to the clipboard.");
  TaskLine line;
  RemoteNotifications center(running_, leftOut_, line);
  std::optional<bool> granted;
  center.requestAuthorization({.alert = true}, [&](bool answer) { granted = answer; });
  center.add({"1", "Title", "Body"}, [](std::optional<Error>) {});
  line.run();
  EXPECT_EQ(granted, false);
  EXPECT_EQ(leftOut_.sentence(),
            "Quillmar is not running, so the output was not copied to the clipboard and no "
            "notification was shown.");
}

TEST_F(InstanceTest, AnInstanceIsNotStartedForAnAction) {
  const PrivateBus bus({applicationId});
  const auto connection = bus.connect();
  RunningInstance running(connection.get());
  RemotePasteboard(running, leftOut_).setString("text");
  EXPECT_EQ(leftOut_.sentence(),
            "Quillmar is not running, so the output was not copied to the clipboard.");
}

TEST_F(InstanceTest, ARefusalIsTold) {
  startOther();
  const auto outcome = running_.activateAction("unknown", g_variant_new_string(""));
  ASSERT_FALSE(outcome);
  EXPECT_THAT(outcome.error().description, testing::StartsWith("The running Quillmar refused ("));
}

TEST(RunningInstance, IsNotThereWithoutABus) {
  RunningInstance running(nullptr);
  LeftOut leftOut;
  EXPECT_FALSE(running.isRunning());
  RemotePasteboard(running, leftOut).setString("text");
  EXPECT_EQ(leftOut.sentence(),
            "There is no session bus to reach Quillmar on, so the output was not copied to the "
            "clipboard.");
}

}  // namespace
}  // namespace quillmar
