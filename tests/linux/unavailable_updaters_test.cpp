#include "platform/linux/updates/unavailable_updaters.h"

#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::Pair;

class UnavailableUpdatersTest : public testing::Test {
 protected:
  std::vector<std::pair<std::string, std::string>> notified;
  UnavailableUpdaters updaters{[this](const std::string& title, const std::string& body) {
    notified.emplace_back(title, body);
  }};
};

TEST_F(UnavailableUpdatersTest, ACheckSaysThatItIsNotAvailableYet) {
  const auto updater = updaters.makeUpdater(true);
  EXPECT_THAT(notified, IsEmpty());
  updater->checkForUpdates();
  EXPECT_THAT(notified, ElementsAre(Pair("Updates", "Checking for updates is not available yet.")));
}

TEST_F(UnavailableUpdatersTest, NothingIsCheckedAutomaticallyEvenWhenItIsChosen) {
  const auto updater = updaters.makeUpdater(true);
  updater->setAutomaticallyChecksForUpdates(true);
  EXPECT_FALSE(updater->automaticallyChecksForUpdates());
}

}  // namespace
}  // namespace quillmar
