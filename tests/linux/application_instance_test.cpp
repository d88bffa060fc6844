#include "platform/linux/application/application_instance.h"

#include <chrono>
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
#include "tests/linux/bus_client.h"
#include "tests/linux/child_programs.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/private_bus.h"
#include "tests/linux/silent_socket.h"

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
  }

  ~InstanceTest() override {
    // Queued tasks still refer to this test's bus.
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

  /// Waits until the other process has been asked for this.
  void expectRecord(const std::string& expected) const {
    const guint tick = g_timeout_add(
        10, [](gpointer) -> gboolean { return G_SOURCE_CONTINUE; }, nullptr);
    runMainLoopUntil([&] { return recorded().size() >= expected.size(); });
    g_source_remove(tick);
    EXPECT_TRUE(recorded() == expected) << recorded().substr(0, 1000);
  }

  /// The environment of another program on the bus that was started by the user.
  Environment startedWith(const std::string& token, const std::string& startupId) const {
    return {{{"DBUS_SESSION_BUS_ADDRESS", bus_.address()},
             {"XDG_ACTIVATION_TOKEN", token},
             {"DESKTOP_STARTUP_ID", startupId}}};
  }

  /// Calls the other process and waits for its answer.
  BusReply call(const char* method, GVariant* arguments) {
    return callOnBus(connection_.get(), {applicationId, applicationPath, applicationInterface},
                     method, arguments);
  }

  std::string folder_;
  PrivateBus bus_;
  const Environment environment_{{{"DBUS_SESSION_BUS_ADDRESS", bus_.address()}}};
  GObjectPtr<GDBusConnection> connection_ = bus_.connect();
  std::optional<ServerProgram> other_;
  RunningInstance running_{environment_};
  DeliveryFailures failures_;
};

TEST_F(InstanceTest, TheFirstOneRunsAndOwnsTheName) {
  ApplicationInstance instance({});
  EXPECT_FALSE(running_.isRunning());
  EXPECT_EQ(instance.start(environment_).value(), ApplicationInstance::Start::running);
  EXPECT_NE(instance.connection(), nullptr);
  EXPECT_TRUE(running_.isRunning());
}

TEST_F(InstanceTest, TheSecondOneLearnsOfTheFirst) {
  startOther();
  ApplicationInstance instance({});
  EXPECT_EQ(instance.start(environment_).value(), ApplicationInstance::Start::alreadyRunning);
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

TEST_F(InstanceTest, ASignalEndsItAlsoWhileItsMainThreadIsHeld) {
  startOther();
  RemotePasteboard(running_, failures_).setString("hold");
  expectRecord("clipboard hold\n");
  EXPECT_EQ(other_->end(SIGTERM), 0);
}

TEST_F(InstanceTest, ASignalComesBeforeWhatWaitsInTheMainLoop) {
  ApplicationInstance instance({});
  ASSERT_TRUE(instance.start(environment_));
  bool dispatched = false;
  const guint other = g_idle_add_full(
      G_PRIORITY_DEFAULT,
      [](gpointer flag) -> gboolean {
        *static_cast<bool*>(flag) = true;
        return G_SOURCE_CONTINUE;
      },
      &dispatched, nullptr);
  std::raise(SIGTERM);
  EXPECT_EQ(instance.run(), 0);
  EXPECT_FALSE(dispatched);
  g_source_remove(other);
}

/// A loop of a toolkit, on the same context, that takes over from the application's.
class TakenOver {
 public:
  explicit TakenOver(ApplicationInstance& instance) {
    instance.mainLoop().handOver({.run =
                                      [this] {
                                        began_ = true;
                                        g_main_loop_run(loop_.get());
                                      },
                                  .quit = [this] { g_main_loop_quit(loop_.get()); }});
  }

  bool began() const { return began_; }

 private:
  GMainLoopPtr loop_{g_main_loop_new(nullptr, false)};
  bool began_ = false;
};

TEST_F(InstanceTest, ASignalEndsItAlsoInAnotherLoop) {
  ApplicationInstance instance({});
  ASSERT_TRUE(instance.start(environment_));
  const TakenOver loop(instance);
  const guint order = g_idle_add(
      [](gpointer) -> gboolean {
        std::raise(SIGTERM);
        return G_SOURCE_REMOVE;
      },
      nullptr);
  EXPECT_NE(order, 0u);
  EXPECT_EQ(instance.run(), 0);
  EXPECT_TRUE(loop.began());
}

TEST_F(InstanceTest, TheEndOfTheSessionEndsItAlsoInAnotherLoop) {
  ApplicationInstance instance({});
  ASSERT_TRUE(instance.start(environment_));
  const TakenOver loop(instance);
  bus_.kill();
  EXPECT_EQ(instance.run(), 0);
  EXPECT_TRUE(loop.began());
}

TEST_F(InstanceTest, TerminatedBeforeItRunsItDoesNotBeginAnotherLoop) {
  ApplicationInstance instance({});
  ASSERT_TRUE(instance.start(environment_));
  const TakenOver loop(instance);
  instance.terminate();
  EXPECT_EQ(instance.run(), 0);
  EXPECT_FALSE(loop.began());
}

TEST_F(InstanceTest, ABusThatHangsDoesNotKeepItFromEnding) {
  ApplicationInstance instance({});
  ASSERT_TRUE(instance.start(environment_));
  // The end of the grace would pass for a success of this test program.
  std::signal(SIGALRM, SIG_DFL);
  bus_.signal(SIGSTOP);
  // More than the system keeps for a reader who does not read.
  const std::string text(5'000'000, 'x');
  g_dbus_connection_emit_signal(instance.connection(), nullptr, "/path", "inter.face", "Signal",
                                g_variant_new("(s)", text.c_str()), nullptr);
  instance.terminate();
  EXPECT_EQ(instance.run(), 0);
}

TEST_F(InstanceTest, WithoutASessionBusItCannotStart) {
  ApplicationInstance instance({});
  const auto start = instance.start({{{"DISPLAY", ":0"}}});
  ASSERT_FALSE(start);
  EXPECT_EQ(start.error().description, "There is no session bus, so Quillmar cannot start.");
}

TEST_F(InstanceTest, WithASessionBusOfNoUseItSaysWhyItCannotStart) {
  ApplicationInstance instance({});
  const auto start = instance.start({{{"DBUS_SESSION_BUS_ADDRESS", "unix:path=/nonexistent/bus"}}});
  ASSERT_FALSE(start);
  EXPECT_EQ(start.error().description,
            "The session bus cannot be used (Could not connect: No such file or directory), so "
            "Quillmar cannot start.");
}

TEST_F(InstanceTest, AnotherInstanceThatDoesNotAnswerIsRunningAllTheSame) {
  const auto busy = bus_.connect();
  ASSERT_TRUE(takeName(busy.get(), applicationId));
  ApplicationInstance instance({});
  // Nobody answers for the other instance while this one starts: that would be in this thread.
  EXPECT_EQ(instance.start(environment_).value(), ApplicationInstance::Start::alreadyRunning);
}

TEST_F(InstanceTest, TerminatedBeforeItRunsItEndsAtOnce) {
  ApplicationInstance instance({});
  ASSERT_TRUE(instance.start(environment_));
  instance.terminate();
  EXPECT_EQ(instance.run(), 0);
}

TEST_F(InstanceTest, GetsTheTextForTheClipboard) {
  startOther();
  RemotePasteboard(running_, failures_).setString("naïve <text>");
  expectRecord("clipboard naïve <text>\n");
  EXPECT_EQ(failures_.sentence(), std::nullopt);
}

TEST_F(InstanceTest, GetsMegabytesForTheClipboard) {
  startOther();
  const std::string text(5'000'000, 'x');
  RemotePasteboard(running_, failures_).setString(text);
  expectRecord("clipboard " + text + "\n");
  EXPECT_EQ(failures_.sentence(), std::nullopt);
}

TEST_F(InstanceTest, GetsTheLargestTextThatTheBusCanCarry) {
  startOther();
  // The variant holds a terminating null character, too.
  const std::string text(RunningInstance::maximumParameterBytes - 1, 'x');
  RemotePasteboard(running_, failures_).setString(text);
  EXPECT_EQ(failures_.sentence(), std::nullopt);
  expectRecord("clipboard " + text + "\n");
}

TEST_F(InstanceTest, ATextThatTheBusCannotCarryIsAnErrorAndTheNextOneArrives) {
  startOther();
  RemotePasteboard pasteboard(running_, failures_);
  pasteboard.setString(std::string(RunningInstance::maximumParameterBytes, 'x'));
  EXPECT_EQ(failures_.sentence(),
            "The running Quillmar accepts at most 30 MiB from another process, so the output was "
            "not copied to the clipboard.");
  pasteboard.setString("small");
  expectRecord("clipboard small\n");
}

TEST_F(InstanceTest, GetsNotifications) {
  startOther();
  TaskLine line;
  RemoteNotifications center(running_, failures_, line);
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
  expectRecord("notify Title|Body & more\n");
}

TEST_F(InstanceTest, WhatABusCannotCarryIsReplaced) {
  startOther();
  RemotePasteboard(running_, failures_).setString(std::string("a\0b", 3));
  expectRecord("clipboard a\uFFFDb\n");
}

TEST_F(InstanceTest, WithoutAnInstanceTheFailuresSayWhatWasNotDelivered) {
  RemotePasteboard(running_, failures_).setString("text");
  EXPECT_EQ(failures_.sentence(),
            "Quillmar is not running, so the output was not copied to the clipboard.");
  TaskLine line;
  RemoteNotifications center(running_, failures_, line);
  std::optional<bool> granted;
  center.requestAuthorization({.alert = true}, [&](bool answer) { granted = answer; });
  center.add({"1", "Title", "Body"}, [](std::optional<Error>) {});
  line.run();
  EXPECT_EQ(granted, false);
  EXPECT_EQ(failures_.sentence(),
            "Quillmar is not running, so the output was not copied to the clipboard and no "
            "notification was shown.");
}

TEST_F(InstanceTest, AnInstanceIsNotStartedForAnAction) {
  const PrivateBus bus({applicationId});
  const Environment environment{{{"DBUS_SESSION_BUS_ADDRESS", bus.address()}}};
  RunningInstance running(environment);
  RemotePasteboard(running, failures_).setString("text");
  EXPECT_EQ(failures_.sentence(),
            "Quillmar is not running, so the output was not copied to the clipboard.");
}

TEST_F(InstanceTest, ABusyInstanceIsNotWaitedForAndGetsEverythingInOrder) {
  startOther();
  other_->signal(SIGSTOP);
  TaskLine line;
  RemotePasteboard pasteboard(running_, failures_);
  RemoteNotifications center(running_, failures_, line);
  pasteboard.setString("one");
  center.add({"1", "two", "three"}, [](std::optional<Error>) {});
  pasteboard.setString("four");
  EXPECT_EQ(failures_.sentence(), std::nullopt);
  other_->signal(SIGCONT);
  expectRecord("clipboard one\nnotify two|three\nclipboard four\n");
}

TEST_F(InstanceTest, AnInstanceThatHasEndedIsMissed) {
  startOther();
  RemotePasteboard pasteboard(running_, failures_);
  pasteboard.setString("text");
  EXPECT_EQ(failures_.sentence(), std::nullopt);
  other_->end(SIGTERM);
  pasteboard.setString("more");
  EXPECT_EQ(failures_.sentence(),
            "Quillmar is not running, so the output was not copied to the clipboard.");
}

TEST_F(InstanceTest, IsActivatedByItsDesktopEntryWithWhatTheCallerBrings) {
  startOther();
  for (const char* platformData :
       {"({'activation-token': <'a token'>},)",
        "({'desktop-startup-id': <'panel_TIME4000000000'>},)",
        "({'activation-token': <'token'>, 'desktop-startup-id': <'an_id_TIME12'>},)",
        "(@a{sv} {},)"}) {
    EXPECT_EQ(call("Activate", g_variant_new_parsed(platformData)).errorName, "");
  }
  EXPECT_EQ(recorded(),
            "activate 0 a token\n"
            "activate 4000000000 panel_TIME4000000000\n"
            "activate 12 token\n"
            "activate 0 \n");
}

TEST_F(InstanceTest, ASecondStartHandsItsActivationOn) {
  startOther();
  const Environment environment = startedWith("token", "id_TIME77");
  EXPECT_TRUE(RunningInstance(environment).activate());
  expectRecord("activate 77 token\n");
}

TEST_F(InstanceTest, OpensWhatItsDesktopEntryIsGivenInOrder) {
  startOther();
  EXPECT_EQ(call("Open", g_variant_new_parsed(
                             "(['file:///b.json', 'quillmar://import?url=x', 'file:///a.json'], "
                             "{'activation-token': <'a token'>})"))
                .errorName,
            "");
  EXPECT_EQ(call("Open", g_variant_new_parsed("(@as [], @a{sv} {})")).errorName, "");
  EXPECT_EQ(recorded(),
            "open 0 a token file:///b.json quillmar://import?url=x file:///a.json\n"
            "open 0 \n");
}

TEST_F(InstanceTest, ASecondStartPassesItsFilesAndItsActivationOn) {
  startOther();
  const Environment environment = startedWith("token", "id_TIME77");
  EXPECT_TRUE(RunningInstance(environment).open({"file:///b.json", "quillmar:\xff", "file:///a"}));
  expectRecord("open 77 token file:///b.json quillmar:\uFFFD file:///a\n");
}

TEST_F(InstanceTest, AnInstanceThatIsBusyOpensFilesLater) {
  startOther();
  other_->signal(SIGSTOP);
  RunningInstance impatient(environment_, std::chrono::milliseconds(100));
  EXPECT_TRUE(impatient.open({"file:///a.json"}));
  EXPECT_TRUE(impatient.open({"file:///b.json"}));
  other_->signal(SIGCONT);
  expectRecord("open 0  file:///a.json\nopen 0  file:///b.json\n");
}

TEST_F(InstanceTest, WhatArrivesBeforeItRunsWaits) {
  std::vector<std::string> opened;
  ApplicationInstance* started = nullptr;
  ApplicationInstance instance({.open = [&](const std::vector<std::string>& urls) {
    opened = urls;
    started->terminate();
  }});
  started = &instance;
  ASSERT_TRUE(instance.start(environment_));
  ASSERT_TRUE(running_.open({"file:///a.json"}));
  EXPECT_TRUE(opened.empty());
  EXPECT_EQ(instance.run(), 0);
  EXPECT_EQ(opened, std::vector<std::string>{"file:///a.json"});
}

TEST_F(InstanceTest, WithoutAnInstanceNothingIsOpened) {
  EXPECT_EQ(running_.open({"file:///a.json"}).error().description, "Quillmar is not running");
}

TEST_F(InstanceTest, ShowsItsMenuToTheActivationOfWhoAsks) {
  startOther();
  const Environment environment = startedWith("", "id_TIME77");
  EXPECT_TRUE(RunningInstance(environment).showMenu());
  EXPECT_EQ(recorded(), "menu 77 id_TIME77\n");
  EXPECT_TRUE(running_.showMenu());
  EXPECT_EQ(recorded(), "menu 77 id_TIME77\nmenu 0 \n");
}

TEST_F(InstanceTest, TheCallerGetsTheReasonForNoMenu) {
  startOther();
  const Environment environment = startedWith("refuse", "");
  EXPECT_EQ(RunningInstance(environment).showMenu().error().description, "There is no display.");
}

TEST_F(InstanceTest, AMenuThatWasAskedForTooLongAgoIsNotShown) {
  startOther();
  EXPECT_EQ(
      call("ActivateAction",
           g_variant_new_parsed("('menu', @av [], {'com.tovenworks.quillmar.expires': <int64 1>})"))
          .errorMessage,
      "The request for the menu has expired.");
  EXPECT_EQ(recorded(), "");
}

TEST_F(InstanceTest, AnInstanceThatListensMayTakeItsTimeForTheMenuButNotForEver) {
  startOther();
  const Environment environment = startedWith("hold", "");
  RunningInstance running(environment, std::chrono::hours(1), std::chrono::milliseconds(100));
  EXPECT_THAT(running.showMenu().error().description, testing::HasSubstr("did not answer in time"));
  EXPECT_EQ(recorded(), "menu 0 hold\n");
}

TEST_F(InstanceTest, AnInstanceThatIsHeldIsNotWaitedForLongAndShowsNoMenuAfterwards) {
  startOther();
  other_->signal(SIGSTOP);
  RunningInstance impatient(environment_, std::chrono::milliseconds(100), std::chrono::hours(1));
  EXPECT_EQ(
      impatient.showMenu().error().description,
      "Quillmar did not answer in time, so the menu may not open. It may be busy with a command "
      "that does not run in the background.");
  EXPECT_TRUE(impatient.activate());
  // The earlier request has expired, too.
  EXPECT_FALSE(impatient.showMenu());
  RemotePasteboard(running_, failures_).setString("later");
  other_->signal(SIGCONT);
  expectRecord("clipboard later\n");
}

TEST_F(InstanceTest, WithoutAnInstanceThereIsNoMenu) {
  EXPECT_EQ(running_.showMenu().error().description,
            "Quillmar is not running, so there is no menu to show.");
  EXPECT_FALSE(running_.activate());
}

TEST_F(InstanceTest, ReportsItsHotKeysThatDoNotWork) {
  startOther();
  ASSERT_TRUE(running_.isRunning());
  const auto report = running_.hotKeyReport();
  ASSERT_TRUE(report) << report.error().description;
  EXPECT_EQ(report.value().settingsFile, record());
  EXPECT_THAT(
      report.value().unregistered,
      testing::ElementsAre(UnregisteredHotKey{"id", "ti\uFFFDt\uFFFDle", HotKeyStatus::keyTaken},
                           UnregisteredHotKey{"second", "", HotKeyStatus::notGranted}));
}

TEST_F(InstanceTest, AnInstanceThatIsBusyIsNotWaitedForLongToReportItsHotKeys) {
  startOther();
  other_->signal(SIGSTOP);
  RunningInstance impatient(environment_, std::chrono::milliseconds(100));
  ASSERT_TRUE(impatient.isRunning());
  EXPECT_EQ(
      impatient.hotKeyReport().error().description,
      "Quillmar did not answer in time, so hot keys that do not work are not marked. It may be "
      "busy with a command that does not run in the background.");
}

TEST_F(InstanceTest, AnInstanceIsNotStartedForItsMenu) {
  const PrivateBus bus({applicationId});
  const Environment environment{{{"DBUS_SESSION_BUS_ADDRESS", bus.address()}}};
  EXPECT_EQ(RunningInstance(environment).showMenu().error().description,
            "Quillmar is not running, so there is no menu to show.");
}

TEST_F(InstanceTest, RefusesActionsThatItDoesNotHave) {
  startOther();
  for (const char* arguments :
       {"('unknown', [<'text'>], @a{sv} {})", "('unknown', @av [], @a{sv} {})",
        "('menu', [<'text'>], @a{sv} {})", "('set-clipboard', @av [], @a{sv} {})",
        "('set-clipboard', [<7>], @a{sv} {})", "('notify', [<'text'>], @a{sv} {})"}) {
    EXPECT_EQ(call("ActivateAction", g_variant_new_parsed(arguments)).errorName,
              "org.freedesktop.DBus.Error.InvalidArgs")
        << arguments;
  }
  EXPECT_EQ(recorded(), "");
}

TEST(RunningInstance, WithoutABusThereIsNoMenu) {
  const Environment environment{{{"DISPLAY", ":0"}}};
  EXPECT_EQ(RunningInstance(environment).showMenu().error().description,
            "There is no session bus, so there is no menu to show.");
}

TEST(RunningInstance, IsNotThereWithoutABus) {
  const Environment environment{{{"DISPLAY", ":0"}}};
  RunningInstance running(environment);
  DeliveryFailures failures;
  EXPECT_FALSE(running.isRunning());
  RemotePasteboard(running, failures).setString("text");
  EXPECT_EQ(failures.sentence(),
            "There is no session bus, so the output was not copied to the clipboard.");
}

TEST(RunningInstance, ABusThatNeverAnswersIsAskedOnce) {
  SilentSocket socket("bus");
  const Environment environment{{{"XDG_RUNTIME_DIR", socket.folder()}}};
  RunningInstance running(environment, std::chrono::milliseconds(50));
  EXPECT_EQ(socket.connectionCount(), 0U);
  DeliveryFailures failures;
  RemotePasteboard pasteboard(running, failures);
  pasteboard.setString("text");
  pasteboard.setString("text");
  EXPECT_EQ(socket.connectionCount(), 1U);
  EXPECT_EQ(failures.sentence(),
            "The session bus does not answer, so the output was not copied to the clipboard.");
}

TEST(RunningInstance, ABusThatStopsAnsweringIsNotWaitedForLongerThanAllowed) {
  PrivateBus bus;
  const Environment environment{{{"DBUS_SESSION_BUS_ADDRESS", bus.address()}}};
  RunningInstance running(environment, std::chrono::seconds(1));
  EXPECT_FALSE(running.isRunning());
  bus.signal(SIGSTOP);
  DeliveryFailures failures;
  RemotePasteboard(running, failures).setString("text");
  EXPECT_EQ(failures.sentence(),
            "The session bus does not answer, so the output was not copied to the clipboard.");
}

}  // namespace
}  // namespace quillmar
