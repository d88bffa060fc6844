// What every UserNotificationCenter does. A backend is a default-constructible type with
//   UserNotificationCenter& center();
//   void stopService();                              // from now on nothing can be shown
//   bool runUntil(std::function<bool()> done);       // runs the main thread's tasks
//   std::vector<ShownInConformance> shown();         // what the user got to see, in order

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "platform/user_notifications.h"

namespace quillmar {

struct ShownInConformance {
  std::string title;
  std::string body;
  bool withSound = false;

  bool operator==(const ShownInConformance&) const = default;
};

inline void PrintTo(const ShownInConformance& shown, std::ostream* out) {
  *out << "“" << shown.title << "”, “" << shown.body
       << (shown.withSound ? "”, sound" : "”, silent");
}

template <class Backend>
class UserNotificationsConformance : public testing::Test {
 protected:
  struct FixedPresentation final : UserNotificationCenterDelegate {
    PresentationOptions options;
    std::vector<UserNotification> asked;

    PresentationOptions willPresent(const UserNotification& notification) override {
      asked.push_back(notification);
      return options;
    }
  };

  UserNotificationCenter& center() { return backend_.center(); }

  /// Asks for permission and waits for the answer.
  bool authorize() {
    std::optional<bool> answer;
    center().requestAuthorization({.alert = true, .sound = true, .badge = true},
                                  [&](bool granted) { answer = granted; });
    EXPECT_FALSE(answer) << "The answer came inside the call.";
    backend_.runUntil([&] { return answer.has_value(); });
    return answer.value_or(false);
  }

  /// Adds the notifications and waits for all completions; returns their errors.
  std::vector<std::optional<Error>> add(const std::vector<UserNotification>& notifications) {
    std::vector<std::optional<Error>> errors;
    for (const auto& notification : notifications) {
      center().add(notification, [&](std::optional<Error> error) { errors.push_back(error); });
      EXPECT_TRUE(errors.empty()) << "The completion ran inside the call.";
    }
    backend_.runUntil([&] { return errors.size() == notifications.size(); });
    return errors;
  }

  Backend backend_;
};

TYPED_TEST_SUITE_P(UserNotificationsConformance);

TYPED_TEST_P(UserNotificationsConformance, MayShowWhereThereIsAService) {
  EXPECT_TRUE(this->authorize());
}

TYPED_TEST_P(UserNotificationsConformance, MayNotShowWhereThereIsNone) {
  this->backend_.stopService();
  EXPECT_FALSE(this->authorize());
}

TYPED_TEST_P(UserNotificationsConformance, ShowsTitleAndBody) {
  const auto errors = this->add({{"1", "Backup", "All files are safe."}});
  EXPECT_EQ(errors, std::vector<std::optional<Error>>{std::nullopt});
  EXPECT_EQ(this->backend_.shown(),
            (std::vector<ShownInConformance>{{"Backup", "All files are safe.", true}}));
}

TYPED_TEST_P(UserNotificationsConformance, ShowsRequestsInOrder) {
  std::vector<UserNotification> requests;
  std::vector<ShownInConformance> expected;
  for (int i = 0; i < 20; ++i) {
    requests.push_back({std::to_string(i), "Title", "Body " + std::to_string(i)});
    expected.push_back({"Title", "Body " + std::to_string(i), true});
  }
  this->add(requests);
  EXPECT_EQ(this->backend_.shown(), expected);
}

TYPED_TEST_P(UserNotificationsConformance, KeepsEveryCharacter) {
  const std::string title = "50 % <done> & “dusted” 🧭";
  const std::string body = "if (a < b && c > d) <b>bold</b>\n&amp; 日本語";
  this->add({{"1", title, body}});
  EXPECT_EQ(this->backend_.shown(), (std::vector<ShownInConformance>{{title, body, true}}));
}

TYPED_TEST_P(UserNotificationsConformance, ASilentNotificationIsSilent) {
  this->add({{"1", "Title", "Body", NotificationSound::none}});
  EXPECT_EQ(this->backend_.shown(), (std::vector<ShownInConformance>{{"Title", "Body", false}}));
}

TYPED_TEST_P(UserNotificationsConformance, TheDelegateDecidesAboutSound) {
  typename TestFixture::FixedPresentation delegate;
  delegate.options = {.banner = true, .list = true, .sound = false};
  this->center().setDelegate(&delegate);
  this->add({{"1", "Title", "Body"}});
  delegate.options.sound = true;
  this->add({{"2", "Title", "Body"}});
  this->center().setDelegate(nullptr);
  EXPECT_EQ(this->backend_.shown(),
            (std::vector<ShownInConformance>{{"Title", "Body", false}, {"Title", "Body", true}}));
  EXPECT_EQ(delegate.asked,
            (std::vector<UserNotification>{{"1", "Title", "Body"}, {"2", "Title", "Body"}}));
}

TYPED_TEST_P(UserNotificationsConformance, WithoutAServiceTheCompletionSaysWhy) {
  this->backend_.stopService();
  const auto errors = this->add({{"1", "Title", "Body"}, {"2", "Title", "Body"}});
  ASSERT_EQ(errors.size(), 2U);
  for (const auto& error : errors) {
    ASSERT_TRUE(error);
    EXPECT_EQ(error->description, "No notification service is running and none can be started.");
  }
  EXPECT_TRUE(this->backend_.shown().empty());
}

REGISTER_TYPED_TEST_SUITE_P(UserNotificationsConformance, MayShowWhereThereIsAService,
                            MayNotShowWhereThereIsNone, ShowsTitleAndBody, ShowsRequestsInOrder,
                            KeepsEveryCharacter, ASilentNotificationIsSilent,
                            TheDelegateDecidesAboutSound, WithoutAServiceTheCompletionSaysWhy);

}  // namespace quillmar
