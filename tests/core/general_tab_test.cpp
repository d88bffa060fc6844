#include "settings_ui/general_tab.h"

#include <algorithm>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/checkbox.h"
#include "platform/widgets/tab_view.h"
#include "tests/core/settings_window_fixture.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::IsNull;
using testing::NotNull;

class GeneralTabTest : public SettingsWindowFixture {
 protected:
  void openTab() {
    open({});
    controller->tabView().select(1);
  }

  void configureUpdates() {
    memory.bundle.information = {{"SUFeedURL", "https://quillmar.example/feed.xml"},
                                 {"SUPublicEDKey", "a key"}};
  }

  GeneralTab& tab() { return controller->generalTab(); }
  ControlState launchAtLogin() { return tab().launchAtLoginCheckbox().state(); }
};

TEST_F(GeneralTabTest, HasTheStatedContents) {
  openTab();
  const std::vector<std::string> lines = windowOutline(controller->window());
  const auto start = std::ranges::find(lines, "    scroll");
  EXPECT_THAT(
      std::vector<std::string>(start, lines.end()),
      ElementsAre(
          "    scroll", "      column leading spacing 8 insets 12 12 12 12",
          "        label semibold 12: Startup",
          "        checkbox then 24: Launch Quillmar at login",
          "        label semibold 12: Running commands",
          "        checkbox on: Notify me when a command fails",
          "        checkbox on then 24: Run shell commands in my login shell (loads PATH from "
          "Homebrew, nvm, pyenv, etc.)",
          "        label semibold 12: Menu",
          "        checkbox then 24: When there is only one folder, show its items directly in "
          "the menu",
          "        label semibold 12: Updates",  //
          "        row centred spacing 12",
          "          checkbox disabled: Check for updates automatically",
          "          button: Check for Updates…",
          "        label 10 secondary wrapping then 24: Updates are not configured in this build.",
          "        label semibold 12: Storage",
          std::string("        label 10 secondary wrapping selectable: Settings file: ") +
              settingsPath,
          "        button 11: Show in Finder"));
}

TEST_F(GeneralTabTest, WithConfiguredUpdatesTheNoteIsHiddenAndTheCheckboxSetsTheUpdater) {
  configureUpdates();
  memory.updaters.automaticallyChecks = true;
  openTab();
  EXPECT_TRUE(tab().autoUpdateCheckbox().enabled());
  EXPECT_EQ(tab().autoUpdateCheckbox().state(), ControlState::on);
  EXPECT_THAT(windowOutline(controller->window()),
              testing::Contains("        label 10 secondary wrapping hidden"));
  tab().autoUpdateCheckbox().toggle();
  EXPECT_FALSE(memory.updaters.automaticallyChecks);
}

TEST_F(GeneralTabTest, WithoutAnUpdateFeedTheCheckboxIsDisabledAndUntickedAndANoteSaysWhy) {
  memory.updaters.automaticallyChecks = true;
  openTab();
  EXPECT_FALSE(tab().autoUpdateCheckbox().enabled());
  EXPECT_EQ(tab().autoUpdateCheckbox().state(), ControlState::off);
  EXPECT_THAT(labelTexts(controller->window()),
              testing::Contains("Updates are not configured in this build."));
}

TEST_F(GeneralTabTest, CheckForUpdatesAlwaysAsksTheUpdater) {
  openTab();
  press("Check for Updates…");
  EXPECT_EQ(memory.updaters.checks, 1);
}

TEST_F(GeneralTabTest, APreferenceIsStoredSavedAndPosted) {
  openTab();
  tab().failureCheckbox().toggle();
  EXPECT_EQ(
      onDisk().preferences,
      (Preferences{.flattenSingleFolder = false, .notifyOnFailure = false, .useLoginShell = true}));
  tab().loginShellCheckbox().toggle();
  tab().flattenCheckbox().toggle();
  EXPECT_EQ(
      onDisk().preferences,
      (Preferences{.flattenSingleFolder = true, .notifyOnFailure = false, .useLoginShell = false}));
  EXPECT_EQ(onDisk(), settings->config);
  EXPECT_EQ(posts, 3);
}

TEST_F(GeneralTabTest, AToggleThatChangesNoPreferenceWritesNothingAndPostsNothing) {
  openTab();
  // The document already has what the toggle is about to set.
  settings->config.preferences.notifyOnFailure = false;
  memory.files.removeEntry(settingsPath);
  tab().failureCheckbox().toggle();
  EXPECT_EQ(memory.files.contents(settingsPath), std::nullopt);
  EXPECT_EQ(posts, 0);
}

TEST_F(GeneralTabTest, APreferenceThatCannotBeSavedIsLoggedAndStays) {
  openTab();
  memory.files.addFile(settingsPath, memory.files.contents(settingsPath).value(), 0444);
  tab().flattenCheckbox().toggle();
  EXPECT_TRUE(settings->config.preferences.flattenSingleFolder);
  EXPECT_EQ(tab().flattenCheckbox().state(), ControlState::on);
  EXPECT_THAT(log, ElementsAre(testing::StartsWith("Failed to save settings: ")));
}

TEST_F(GeneralTabTest, PreferencesChangedElsewhereAppear) {
  openTab();
  settings->config.preferences.useLoginShell = false;
  settings->save();
  EXPECT_EQ(tab().loginShellCheckbox().state(), ControlState::off);
}

TEST_F(GeneralTabTest, TheCheckboxRegistersAndUnregistersTheLoginItem) {
  openTab();
  tab().launchAtLoginCheckbox().toggle();
  EXPECT_EQ(memory.loginItem.status(), LoginItemStatus::enabled);
  EXPECT_EQ(launchAtLogin(), ControlState::on);
  tab().launchAtLoginCheckbox().toggle();
  EXPECT_EQ(memory.loginItem.status(), LoginItemStatus::notRegistered);
  EXPECT_THAT(sheet(), IsNull());
}

TEST_F(GeneralTabTest, ARefusedLoginItemShowsAnAlertAndTheCheckboxShowsTheRealState) {
  memory.loginItem.switchOff();
  openTab();
  EXPECT_EQ(launchAtLogin(), ControlState::off);
  tab().launchAtLoginCheckbox().toggle();
  ASSERT_THAT(sheet(), NotNull());
  EXPECT_THAT(labelTexts(*sheet()),
              ElementsAre("Could not change the login item",
                          "The login item is off.\n\nYou can also manage this in System Settings "
                          "> General > Login Items."));
  EXPECT_EQ(launchAtLogin(), ControlState::off);
  pressInSheet("OK");
  EXPECT_THAT(sheet(), IsNull());
}

TEST_F(GeneralTabTest, AnAlertThatCannotBeShownIsLogged) {
  memory.loginItem.switchOff();
  openTab();
  memory.windows.failure = Error{"There is no display."};
  tab().launchAtLoginCheckbox().toggle();
  EXPECT_THAT(
      log,
      ElementsAre(testing::StartsWith("Could not change the login item: The login item is off.")));
}

TEST_F(GeneralTabTest, OnlyAnEnabledLoginItemIsTicked) {
  openTab();
  const auto shown = [this] {
    tab().refresh();
    return launchAtLogin();
  };
  EXPECT_EQ(shown(), ControlState::off);
  ASSERT_TRUE(memory.loginItem.registerItem());
  EXPECT_EQ(shown(), ControlState::on);
  memory.loginItem.removeProgram();
  EXPECT_EQ(shown(), ControlState::off);
}

TEST_F(GeneralTabTest, AWindowThatIsOpenedAgainShowsALoginItemThatWasSwitchedOff) {
  openTab();
  tab().launchAtLoginCheckbox().toggle();
  controller->closeWindow();
  memory.loginItem.switchOff();
  EXPECT_TRUE(controller->show({}));
  EXPECT_EQ(launchAtLogin(), ControlState::off);
}

TEST_F(GeneralTabTest, ShowInFinderRevealsTheSettingsFile) {
  openTab();
  press("Show in Finder");
  EXPECT_THAT(memory.workspace.revealedFiles, ElementsAre(settingsPath));
  EXPECT_THAT(sheet(), IsNull());
  memory.workspace.error = Error{"There is no file manager."};
  press("Show in Finder");
  ASSERT_THAT(sheet(), NotNull());
  EXPECT_THAT(labelTexts(*sheet()),
              ElementsAre("Could not show the settings file", "There is no file manager."));
}

}  // namespace
}  // namespace quillmar
