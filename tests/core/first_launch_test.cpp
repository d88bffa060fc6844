// The starter pack and the welcome window.

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "about/updater_manager.h"
#include "app/app_delegate.h"
#include "commands/command_runner.h"
#include "config/document_encoder.h"
#include "config/settings_manager.h"
#include "platform/memory/memory_platform.h"
#include "platform/widgets/label.h"
#include "tests/collaborators.h"
#include "tests/core/menu_outline.h"
#include "tests/core/window_contents.h"
#include "tests/key_presses.h"

namespace quillmar {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::StartsWith;

constexpr const char* packPath = "/share/packs/starter.quillmarpack";
constexpr const char* packsURL = "https://quillmar.example/packs";

MenuCategory folder(const std::string& id, int commands, int separators) {
  MenuCategory folder;
  folder.id = id;
  folder.name = "Folder " + id;
  for (int i = 0; i < commands; ++i) {
    MenuItem item;
    item.id = id + std::to_string(i);
    item.title = "Command " + item.id;
    folder.items.push_back(item);
  }
  for (int i = 0; i < separators; ++i) folder.items.push_back(MenuItem::separator());
  return folder;
}

std::string bodyAnnouncing(const std::string& count) {
  return "Quillmar lives in your menu bar. Click its icon to run any of the " + count +
         " starter commands we just installed, or open Settings to add your own shell commands, "
         "scripts and AppleScripts.\n\nMore ready-made packs for the clipboard, audio, "
         "screenshots, "
         "networking and Shortcuts are available on our website.";
}

class FirstLaunchTest : public testing::Test {
 protected:
  FirstLaunchTest() {
    memory.bundle.information = {{"QuillmarPacksURL", packsURL}};
    addPack(encodeDocument({.categories = {folder("A", 7, 1), folder("B", 5, 1)}}));
  }

  void addPack(const std::string& bytes, std::uint32_t permissions = 0644) {
    memory.files.addFile(packPath, bytes, permissions);
    memory.bundle.resources["packs/starter.quillmarpack"] = packPath;
  }

  /// Starts the program on what the files hold now.
  void launch() {
    loadSettings();
    runner.emplace(runnerCollaborators(memory.platform, *settings, prompts, logLine()));
    hotKeys.emplace(hotKeyCollaborators(memory.platform, *settings, logLine()));
    importCoordinator.emplace(importCollaborators(memory.platform, *settings, logLine()));
    const auto updaters = [this]() -> UpdaterManager& { return updaterManager; };
    delegate.emplace(delegateCollaborators(memory.platform, *settings, *runner, *hotKeys,
                                           *importCoordinator, updaters, center, logLine()));
    delegate->applicationWillFinishLaunching();
    delegate->applicationDidFinishLaunching();
    memory.queues.runAll();
  }

  void loadSettings() {
    if (settings) return;
    settings.emplace(SettingsManager::Collaborators{memory.environment, memory.userDirectories,
                                                    memory.files, center, logLine()});
  }

  void quit() {
    delegate.reset();
    importCoordinator.reset();
    hotKeys.reset();
    runner.reset();
    settings.reset();
    log.clear();
  }

  Window* welcomeWindow() const { return memory.windows.frontWindow(); }

  /// The text between title and buttons.
  std::string body() const {
    return welcomeWindow() == nullptr ? "" : viewsOf<Label>(*welcomeWindow()).at(1)->text();
  }

  void press(std::string_view title) const {
    ASSERT_NE(welcomeWindow(), nullptr);
    ASSERT_NE(buttonTitled(*welcomeWindow(), title), nullptr);
    buttonTitled(*welcomeWindow(), title)->press();
  }

  std::vector<std::string> shownMenu() const { return menuOutline(memory.statusItem.menu()); }

  LogLine logLine() {
    return [this](std::string_view line) {
      if (line != "Notification permission granted") log.emplace_back(line);
    };
  }

  const std::string settingsPath = "/home/user/.config/Quillmar/settings.json";
  MemoryPlatform memory;
  PanelPrompts prompts{promptCollaborators(memory.platform)};
  NotificationCenter center;
  std::vector<std::string> log;
  UpdaterManager updaterManager{memory.bundle, memory.updaters};
  std::optional<SettingsManager> settings;
  std::optional<CommandRunner> runner;
  std::optional<HotKeyManager> hotKeys;
  std::optional<ImportCoordinator> importCoordinator;
  std::optional<AppDelegate> delegate;
};

// The starter pack.

TEST_F(FirstLaunchTest, WithASettingsFileNothingIsInstalledAndNoWindowIsShown) {
  const std::string bytes = "{\"categories\":[]}";
  memory.files.addFile(settingsPath, bytes);
  launch();
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
  EXPECT_EQ(memory.files.contents(settingsPath), bytes);
  EXPECT_THAT(settings->config.categories, IsEmpty());
}

TEST_F(FirstLaunchTest, TheStarterPackIsInTheFirstMenuAndInTheSettingsFile) {
  launch();
  EXPECT_THAT(shownMenu(), Contains("Folder A >"));
  EXPECT_THAT(shownMenu(), Contains("  Command B4"));
  EXPECT_EQ(memory.files.contents(settingsPath), encodeDocument(settings->config));
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(FirstLaunchTest, SeparatorsAreNotAnnounced) {
  launch();
  EXPECT_EQ(body(), bodyAnnouncing("12"));
}

TEST_F(FirstLaunchTest, ThePackIsMergedIntoTheDocument) {
  loadSettings();
  MenuCategory known = folder("A", 1, 0);
  known.name = "Mine";
  settings->config.categories = {known};
  settings->config.preferences.useLoginShell = false;
  launch();
  ASSERT_THAT(settings->config.categories, SizeIs(2));
  EXPECT_EQ(settings->config.categories[0].name, "Mine");
  EXPECT_THAT(settings->config.categories[0].items, SizeIs(8));
  EXPECT_FALSE(settings->config.preferences.useLoginShell);
  // What the pack holds, not what was new in it.
  EXPECT_EQ(body(), bodyAnnouncing("12"));
}

TEST_F(FirstLaunchTest, TheInstallationIsAnnouncedOnceToThoseWhoObserve) {
  int announced = 0;
  const auto observation = center.addObserver(menuItemSettingsChanged, [&] {
    ++announced;
    EXPECT_THAT(settings->config.categories, SizeIs(2));
    // The menu is made after it.
    EXPECT_THAT(shownMenu(), IsEmpty());
  });
  launch();
  EXPECT_EQ(announced, 1);
}

TEST_F(FirstLaunchTest, TheNextLaunchIsNotTheFirst) {
  launch();
  const auto saved = memory.files.contents(settingsPath);
  quit();
  launch();
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
  EXPECT_EQ(memory.files.contents(settingsPath), saved);
}

TEST_F(FirstLaunchTest, AMissingPackIsLoggedAndTheDocumentSavedAsItIs) {
  memory.bundle.resources.clear();
  launch();
  EXPECT_EQ(body(), bodyAnnouncing("0"));
  EXPECT_EQ(memory.files.contents(settingsPath), encodeDocument({}));
  EXPECT_THAT(log, ElementsAre("Failed to install the starter pack: The resource "
                               "“packs/starter.quillmarpack” is missing."));
  quit();
  launch();
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
}

TEST_F(FirstLaunchTest, APackThatDoesNotDecodeIsLoggedAndInstallsNothing) {
  addPack("{\"categories\":[{]}");
  launch();
  EXPECT_EQ(body(), bodyAnnouncing("0"));
  EXPECT_THAT(log, ElementsAre(StartsWith("Failed to install the starter pack: ")));
  EXPECT_EQ(memory.files.contents(settingsPath), encodeDocument({}));
  quit();
  launch();
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
}

TEST_F(FirstLaunchTest, APackThatCannotBeReadIsLoggedAndInstallsNothing) {
  addPack("{}", 0000);
  launch();
  EXPECT_EQ(body(), bodyAnnouncing("0"));
  EXPECT_THAT(log, ElementsAre(HasSubstr(packPath)));
  EXPECT_EQ(memory.files.contents(settingsPath), encodeDocument({}));
}

TEST_F(FirstLaunchTest, WhenItCannotBeSavedThePackIsInTheMenuAllTheSame) {
  memory.files.addFolder("/home/user/.config/Quillmar", 0555);
  launch();
  EXPECT_THAT(log, ElementsAre(StartsWith("Failed to save settings: ")));
  EXPECT_THAT(shownMenu(), Contains("Folder A >"));
  EXPECT_EQ(body(), bodyAnnouncing("12"));
}

// The welcome window.

TEST_F(FirstLaunchTest, TheWelcomeWindowGreetsInTheMiddleOfTheScreen) {
  launch();
  ASSERT_NE(welcomeWindow(), nullptr);
  EXPECT_EQ(memory.windows.titleOnScreen(*welcomeWindow()), "Welcome to Quillmar");
  EXPECT_EQ(welcomeWindow()->contentSize(), (Size{480, 320}));
  EXPECT_TRUE(memory.windows.placedInMiddle(*welcomeWindow()));
  EXPECT_THAT(windowOutline(*welcomeWindow()),
              ElementsAre("column centred spacing 14 insets 24 24 24 24",
                          "  image width 96 height 96: applicationIcon",
                          "  label bold 20: Welcome to Quillmar",
                          "  label 12 wrapping: " + bodyAnnouncing("12"),
                          "  row centred spacing 12", "    button: Browse Packs…",
                          "    button: Open Settings", "    button return: Get Started"));
}

TEST_F(FirstLaunchTest, OneCommandIsPluralToo) {
  addPack(encodeDocument({.categories = {folder("A", 1, 0)}}));
  launch();
  EXPECT_EQ(body(), bodyAnnouncing("1"));
}

TEST_F(FirstLaunchTest, TheWelcomeWindowUsesTheActivationOfTheLaunch) {
  memory.application.setActivation({.timestamp = 5, .token = "started"});
  launch();
  EXPECT_EQ(memory.windows.lastActivation(), (Activation{.timestamp = 5, .token = "started"}));
}

TEST_F(FirstLaunchTest, BrowsePacksOpensTheirPageAndLeavesTheWindowOpen) {
  launch();
  press("Browse Packs…");
  EXPECT_THAT(memory.workspace.openedURLs, ElementsAre(packsURL));
  EXPECT_THAT(memory.windows.windows(), SizeIs(1));
}

TEST_F(FirstLaunchTest, APageThatCannotBeOpenedIsReportedInANotification) {
  launch();
  memory.workspace.error = Error{"There is no browser."};
  press("Browse Packs…");
  memory.queues.runAll();
  ASSERT_THAT(memory.notifications.shown(), SizeIs(1));
  EXPECT_EQ(memory.notifications.shown()[0].notification.title, "Quillmar");
  EXPECT_EQ(memory.notifications.shown()[0].notification.body, "There is no browser.");
}

TEST_F(FirstLaunchTest, WithoutAnAddressThereIsNothingToBrowse) {
  memory.bundle.information.clear();
  launch();
  press("Browse Packs…");
  EXPECT_THAT(memory.workspace.openedURLs, IsEmpty());
  EXPECT_FALSE(memory.windows.widget(*buttonTitled(*welcomeWindow(), "Browse Packs…"))->enabled);
}

TEST_F(FirstLaunchTest, OpenSettingsClosesTheWindowAndOpensTheSettings) {
  launch();
  press("Open Settings");
  ASSERT_THAT(memory.windows.windows(), SizeIs(1));
  EXPECT_EQ(memory.windows.frontWindow()->title(), "Quillmar Settings");
}

TEST_F(FirstLaunchTest, GetStartedClosesTheWindow) {
  launch();
  press("Get Started");
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
}

TEST_F(FirstLaunchTest, ReturnGetsStarted) {
  launch();
  EXPECT_EQ(memory.windows.focused(*welcomeWindow()),
            buttonTitled(*welcomeWindow(), "Get Started"));
  welcomeWindow()->key(pressOf(keys::returnKey));
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
}

TEST_F(FirstLaunchTest, EscapeClosesTheWelcomeWindow) {
  launch();
  EXPECT_TRUE(welcomeWindow()->key(pressOf(keys::escape)));
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
}

TEST_F(FirstLaunchTest, WithoutWindowsTheLaunchGoesOn) {
  memory.windows.failure = Error{"There is no display."};
  launch();
  EXPECT_THAT(log, ElementsAre("Could not show the welcome window: There is no display."));
  EXPECT_THAT(memory.notifications.shown(), IsEmpty());
  EXPECT_THAT(shownMenu(), Contains("Folder A >"));
}

}  // namespace
}  // namespace quillmar
