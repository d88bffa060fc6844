#include "platform/linux/notifications/desktop_notifications.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/conformance/user_notifications_conformance.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/notification_service.h"
#include "tests/linux/private_bus.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::Optional;
using testing::Pair;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class RealBackend {
 public:
  UserNotificationCenter& center() { return center_; }
  void stopService() { service_.reset(); }
  bool runUntil(const std::function<bool()>& done) { return runMainLoopUntil(done); }

  std::vector<ShownInConformance> shown() {
    std::vector<ShownInConformance> list;
    if (!service_) return list;
    for (const auto& call : service_->notifyCalls()) {
      list.push_back({call.summary, call.body, call.hints.contains("sound-name")});
    }
    return list;
  }

 private:
  PrivateBus bus_;
  std::optional<NotificationService> service_{std::in_place, bus_, std::vector<std::string>{}};
  GObjectPtr<GDBusConnection> connection_ = bus_.connect();
  DesktopNotifications center_{connection_.get()};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Desktop, UserNotificationsConformance, RealBackend);

class DesktopNotificationsTest : public testing::Test {
 protected:
  void startService(std::vector<std::string> capabilities) {
    service_.emplace(bus_, std::move(capabilities));
  }

  /// Adds a notification and runs the main loop until its completion.
  std::optional<Error> show(const std::string& title, const std::string& body) {
    std::optional<std::optional<Error>> outcome;
    center_->add({"id", title, body}, [&](std::optional<Error> error) { outcome = error; });
    runMainLoopUntil([&] { return outcome.has_value(); });
    return outcome.value_or(Error{"no completion"});
  }

  /// Replaces the service by another program's and runs the main loop until everybody on our
  /// connection knows.
  void replaceService(std::vector<std::string> capabilities) {
    std::string owner;
    const guint watch = g_dbus_connection_signal_subscribe(
        connection_.get(), "org.freedesktop.DBus", "org.freedesktop.DBus", "NameOwnerChanged",
        nullptr, "org.freedesktop.Notifications", G_DBUS_SIGNAL_FLAGS_NONE,
        [](GDBusConnection*, const gchar*, const gchar*, const gchar*, const gchar*,
           GVariant* arguments, gpointer data) {
          const char* newOwner;
          g_variant_get(arguments, "(&s&s&s)", nullptr, nullptr, &newOwner);
          *static_cast<std::string*>(data) = newOwner;
        },
        &owner, nullptr);
    service_.reset();
    startService(std::move(capabilities));
    runMainLoopUntil([&] { return !owner.empty(); });
    g_dbus_connection_signal_unsubscribe(connection_.get(), watch);
  }

  std::vector<std::string> shownBodies() {
    std::vector<std::string> bodies;
    for (const auto& call : service_->notifyCalls()) bodies.push_back(call.body);
    return bodies;
  }

  bool authorize() {
    std::optional<bool> answer;
    center_->requestAuthorization({.alert = true}, [&](bool granted) { answer = granted; });
    runMainLoopUntil([&] { return answer.has_value(); });
    return answer.value_or(false);
  }

  PrivateBus bus_;
  GObjectPtr<GDBusConnection> connection_ = bus_.connect();
  std::optional<DesktopNotifications> center_{std::in_place, connection_.get()};
  std::optional<NotificationService> service_;
};

TEST_F(DesktopNotificationsTest, SendsTheNameAndIdOfTheApplication) {
  startService({});
  EXPECT_EQ(show("Title", "Body"), std::nullopt);
  ASSERT_THAT(service_->notifyCalls(), SizeIs(1));
  const NotifyCall& call = service_->notifyCalls()[0];
  EXPECT_EQ(call.application, "Quillmar");
  EXPECT_EQ(call.replaces, 0U);
  EXPECT_EQ(call.icon, "com.tovenworks.quillmar");
  EXPECT_EQ(call.actionCount, 0U);
  EXPECT_EQ(call.timeout, -1);
  EXPECT_THAT(call.hints, UnorderedElementsAre(Pair("desktop-entry", "'com.tovenworks.quillmar'"),
                                               Pair("urgency", "byte 0x01"),
                                               Pair("sound-name", "'message-new-instant'")));
}

TEST_F(DesktopNotificationsTest, MarkupIsEscapedInTheBodyOnly) {
  startService({"body", "body-markup"});
  show("<b> & \"title\"", "<b> & \"body\"");
  ASSERT_THAT(service_->notifyCalls(), SizeIs(1));
  EXPECT_EQ(service_->notifyCalls()[0].summary, "<b> & \"title\"");
  EXPECT_EQ(service_->notifyCalls()[0].body, "&lt;b&gt; &amp; \"body\"");
}

TEST_F(DesktopNotificationsTest, ABodyThatIsNoMarkupIsLeftAlone) {
  startService({"body", "body-hyperlinks"});
  show("Title", "<b> & \"body\"");
  EXPECT_THAT(shownBodies(), ElementsAre("<b> & \"body\""));
}

TEST_F(DesktopNotificationsTest, CapabilitiesAreAskedOncePerProvider) {
  startService({"body-markup"});
  show("Title", "one <");
  show("Title", "two <");
  EXPECT_EQ(service_->capabilityCalls(), 1);
  EXPECT_THAT(shownBodies(), ElementsAre("one &lt;", "two &lt;"));

  replaceService({});
  show("Title", "three <");
  EXPECT_EQ(service_->capabilityCalls(), 1);
  EXPECT_THAT(shownBodies(), ElementsAre("three <"));
}

TEST_F(DesktopNotificationsTest, RequestsThatComeWhileCapabilitiesAreAskedKeepTheirOrder) {
  startService({"body-markup"});
  int completions = 0;
  const auto count = [&](std::optional<Error> error) {
    EXPECT_EQ(error, std::nullopt);
    ++completions;
  };
  center_->add({"1", "Title", "1"}, count);
  runMainLoopUntil([&] { return service_->capabilityCalls() == 1; });
  center_->add({"2", "Title", "2"}, count);
  center_->add({"3", "Title", "3"}, count);
  runMainLoopUntil([&] { return completions == 3; });
  center_->add({"4", "Title", "4"}, count);
  runMainLoopUntil([&] { return completions == 4; });
  EXPECT_THAT(shownBodies(), ElementsAre("1", "2", "3", "4"));
}

TEST_F(DesktopNotificationsTest, AServiceMayAppearLate) {
  EXPECT_THAT(show("Title", "lost"),
              Optional(Error{"No notification service is running and none can be started."}));
  startService({});
  EXPECT_EQ(show("Title", "shown"), std::nullopt);
  EXPECT_THAT(shownBodies(), ElementsAre("shown"));
}

TEST_F(DesktopNotificationsTest, AServiceMayVanish) {
  startService({});
  EXPECT_EQ(show("Title", "shown"), std::nullopt);
  service_.reset();
  EXPECT_THAT(show("Title", "lost"),
              Optional(Error{"No notification service is running and none can be started."}));
}

TEST_F(DesktopNotificationsTest, ABurstWaitsInLineAndArrivesWholeAndInOrder) {
  startService({});
  int completions = 0;
  std::vector<std::string> bodies;
  for (int i = 0; i < 1000; ++i) {
    bodies.push_back(std::to_string(i));
    center_->add({"id", "Title", bodies.back()}, [&](std::optional<Error> error) {
      EXPECT_EQ(error, std::nullopt);
      ++completions;
    });
  }
  runMainLoopUntil([&] { return completions == 1000; });
  EXPECT_EQ(shownBodies(), bodies);
}

TEST_F(DesktopNotificationsTest, AServiceThatDoesNotAnswerGetsNoMoreThanItCanHold) {
  startService({});
  show("Title", "first");
  service_->hang();
  int failures = 0;
  for (int i = 0; i < 100; ++i) {
    center_->add({"id", "Title", "Body"},
                 [&](std::optional<Error> error) { failures += error ? 1 : 0; });
  }
  runMainLoopUntil([&] { return service_->notifyCalls().size() == 1 + 32; });
  service_.reset();
  runMainLoopUntil([&] { return failures == 100; });
}

TEST_F(DesktopNotificationsTest, AServiceThatVanishesInTheMiddleFailsTheRequest) {
  startService({});
  service_->hang();
  std::optional<Error> outcome;
  center_->add({"1", "Title", "Body"}, [&](std::optional<Error> error) { outcome = error; });
  runMainLoopUntil([&] { return service_->capabilityCalls() == 1; });
  service_.reset();
  runMainLoopUntil([&] { return outcome.has_value(); });
  EXPECT_THAT(outcome,
              Optional(Error{"No notification service is running and none can be started."}));
}

TEST_F(DesktopNotificationsTest, ARefusalIsReportedInTheServicesWords) {
  startService({});
  service_->refuse("Too many notifications.");
  EXPECT_THAT(show("Title", "Body"), Optional(Error{"The notification service rejected the "
                                                    "notification (Too many notifications)."}));
}

TEST_F(DesktopNotificationsTest, TextThatABusCannotCarryIsReplaced) {
  startService({});
  EXPECT_EQ(show(std::string("a\0b", 3), "c\xFF"), std::nullopt);
  ASSERT_THAT(service_->notifyCalls(), SizeIs(1));
  EXPECT_EQ(service_->notifyCalls()[0].summary, "a\uFFFDb");
  EXPECT_EQ(service_->notifyCalls()[0].body, "c\uFFFD");
}

TEST_F(DesktopNotificationsTest, ABusThatEndsFailsTheRequest) {
  bus_.kill();
  EXPECT_THAT(show("Title", "Body"),
              Optional(Error{"The connection to the session bus was lost, so no notification can "
                             "be shown."}));
  EXPECT_FALSE(authorize());
}

TEST_F(DesktopNotificationsTest, AnswersAfterItsEndGoNowhere) {
  startService({});
  bool completed = false;
  center_->add({"1", "Title", "Body"}, [&](std::optional<Error>) { completed = true; });
  runMainLoopUntil([&] { return service_->capabilityCalls() == 1; });
  center_.reset();
  DesktopNotifications other(connection_.get());
  bool otherCompleted = false;
  other.add({"2", "Title", "Body"}, [&](std::optional<Error>) { otherCompleted = true; });
  runMainLoopUntil([&] { return otherCompleted; });
  EXPECT_FALSE(completed);
}

TEST(DesktopNotifications, AServiceThatCanBeStartedIsPermissionEnough) {
  const PrivateBus bus({"org.freedesktop.Notifications"});
  const auto connection = bus.connect();
  DesktopNotifications center(connection.get());
  std::optional<bool> answer;
  center.requestAuthorization({.alert = true}, [&](bool granted) { answer = granted; });
  runMainLoopUntil([&] { return answer.has_value(); });
  EXPECT_THAT(answer, Optional(true));
}

TEST(DesktopNotifications, AServiceThatCannotBeStartedAfterAllIsReported) {
  const PrivateBus bus({"org.freedesktop.Notifications"});
  const auto connection = bus.connect();
  DesktopNotifications center(connection.get());
  std::optional<Error> outcome;
  center.add({"1", "Title", "Body"}, [&](std::optional<Error> error) { outcome = error; });
  runMainLoopUntil([&] { return outcome.has_value(); });
  EXPECT_THAT(
      outcome->description,
      testing::MatchesRegex("The notification service could not be started \\(.*[^.]\\)\\."));
}

}  // namespace
}  // namespace quillmar
