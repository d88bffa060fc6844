#include "about/updater_manager.h"

#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_bundle.h"
#include "platform/memory/memory_updater.h"

namespace quillmar {
namespace {

using testing::ElementsAre;

class UpdaterManagerTest : public testing::Test {
 protected:
  MemoryBundle bundle;
  MemoryUpdaters updaters;
};

const BundleInformation configured = {{"SUFeedURL", "https://quillmar.example/feed.xml"},
                                      {"SUPublicEDKey", "a key"}};

TEST_F(UpdaterManagerTest, AFeedAndAKeyConfigureUpdatesAndStartTheUpdater) {
  bundle.information = configured;
  const UpdaterManager manager(bundle, updaters);
  EXPECT_TRUE(manager.isConfigured);
  EXPECT_THAT(updaters.made, ElementsAre(true));
}

TEST_F(UpdaterManagerTest, WithoutBothUpdatesAreNotConfiguredAndTheUpdaterIsMadeButNotStarted) {
  const std::vector<BundleInformation> incomplete = {
      {},
      {{"SUFeedURL", "https://a.example"}},
      {{"SUPublicEDKey", "a key"}},
      {{"SUFeedURL", ""}, {"SUPublicEDKey", "a key"}},
      {{"SUFeedURL", "https://a.example"}, {"SUPublicEDKey", ""}},
      {{"SUFeedURL", ""}, {"SUPublicEDKey", ""}}};
  for (const BundleInformation& information : incomplete) {
    bundle.information = information;
    updaters.made.clear();
    const UpdaterManager manager(bundle, updaters);
    EXPECT_FALSE(manager.isConfigured) << testing::PrintToString(information);
    EXPECT_THAT(updaters.made, ElementsAre(false)) << testing::PrintToString(information);
    EXPECT_NE(manager.controller, nullptr);
  }
}

TEST_F(UpdaterManagerTest, WhatIsConfiguredIsDecidedOnce) {
  const UpdaterManager manager(bundle, updaters);
  bundle.information = configured;
  EXPECT_FALSE(manager.isConfigured);
  EXPECT_THAT(updaters.made, ElementsAre(false));
}

TEST_F(UpdaterManagerTest, TheControllerChecksAndKeepsTheChoiceOfAutomaticChecks) {
  bundle.information = configured;
  const UpdaterManager manager(bundle, updaters);
  manager.controller->checkForUpdates();
  EXPECT_EQ(updaters.checks, 1);

  manager.controller->setAutomaticallyChecksForUpdates(true);
  EXPECT_TRUE(UpdaterManager(bundle, updaters).controller->automaticallyChecksForUpdates());
}

}  // namespace
}  // namespace quillmar
