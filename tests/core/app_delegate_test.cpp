#include "app/app_delegate.h"

#include <algorithm>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "about/updater_manager.h"
#include "commands/command_runner.h"
#include "commands/prompt_panel.h"
#include "config/settings_manager.h"
#include "platform/key_equivalent.h"
#include "platform/memory/memory_platform.h"
#include "platform/widgets/button.h"
#include "platform/widgets/outline_view.h"
#include "tests/collaborators.h"
#include "tests/core/menu_outline.h"
#include "tests/core/window_contents.h"
#include "tests/key_presses.h"
#include "tests/virtual_keys.h"

namespace quillmar {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::IsSupersetOf;
using testing::SizeIs;

class AppDelegateTest : public testing::Test {
 protected:
  AppDelegateTest() {
    memory.userDatabase.shell = "/bin/shell";
    memory.files.addFile("/bin/shell", "", 0755);
  }
  ~AppDelegateTest() override {
    // Panels on the screen outlive the window system of the test otherwise.
    const auto stillOpen = PromptPanel::live();
    for (const auto& panel : stillOpen) panel->cancelPressed();
  }

  void launch() {
    delegate.applicationWillFinishLaunching();
    delegate.applicationDidFinishLaunching();
    memory.queues.runAll();
  }

  MenuItem addItem(const std::string& title, const std::string& commandText) {
    MenuItem item;
    item.id = "id of " + title;
    item.title = title;
    item.command.value = commandText;
    if (settings.config.categories.empty()) settings.addCategory("Folder", std::nullopt, true);
    settings.addItem(item, settings.config.categories[0].id, std::nullopt);
    return item;
  }

  void addItemWithHotKey(const std::string& title, const std::string& commandText) {
    addItem(title, commandText);
    MenuCategory& folder = settings.config.categories[0];
    folder.items.back().shortcut =
        KeyboardShortcut{.keyCode = keyK, .character = "k", .modifiers = modifiers::command};
    settings.updateItem(folder.items.back(), folder.id);
  }

  /// Presses the hot key of that item.
  void press(Activation activation = {}) {
    memory.hotKeys.press(keyK, hot_key_modifiers::command, std::move(activation));
    memory.queues.runAll();
  }

  void configureUpdates() {
    memory.bundle.information = {{"SUFeedURL", "https://quillmar.example/feed.xml"},
                                 {"SUPublicEDKey", "a key"}};
  }

  std::vector<std::string> shownMenu() const { return menuOutline(memory.statusItem.menu()); }

  /// This is not the first launch.
  SettingsManager::Collaborators withSettingsFile() {
    memory.files.addFile("/home/user/.config/Quillmar/settings.json", "{}");
    return {memory.environment, memory.userDirectories, memory.files, center, logLine()};
  }

  LogLine logLine() {
    return [this](std::string_view line) { log.emplace_back(line); };
  }

  MemoryPlatform memory;
  NotificationCenter center;
  std::vector<std::string> log;
  SettingsManager settings{withSettingsFile()};
  PanelPrompts prompts{promptCollaborators(memory.platform)};
  CommandRunner runner{runnerCollaborators(memory.platform, settings, prompts, logLine())};
  std::optional<UpdaterManager> updaterManager;
  std::function<UpdaterManager&()> updaterManagerOnFirstUse = [this]() -> UpdaterManager& {
    if (!updaterManager) updaterManager.emplace(memory.bundle, memory.updaters);
    return *updaterManager;
  };
  HotKeyManager hotKeys{hotKeyCollaborators(memory.platform, settings, logLine())};
  ImportCoordinator importCoordinator{importCollaborators(memory.platform, settings, logLine())};
  AppDelegate delegate{delegateCollaborators(memory.platform, settings, runner, hotKeys,
                                             importCoordinator, updaterManagerOnFirstUse, center,
                                             logLine())};
};

TEST_F(AppDelegateTest, LaunchingAsksToShowAlertsSoundsAndBadges) {
  launch();
  EXPECT_THAT(memory.notifications.authorizationRequests(),
              ElementsAre(AuthorizationOptions{.alert = true, .sound = true, .badge = true}));
  EXPECT_THAT(log, ElementsAre("Notification permission granted"));
}

TEST_F(AppDelegateTest, ARefusedPermissionIsNotReported) {
  memory.notifications.setPermission(false);
  launch();
  EXPECT_THAT(log, IsEmpty());
}

TEST_F(AppDelegateTest, NotificationsArePresentedWithBannerListAndSound) {
  launch();
  runner.notify("Title", "Body");
  memory.queues.runAll();
  ASSERT_THAT(memory.notifications.shown(), SizeIs(1));
  EXPECT_EQ(memory.notifications.shown()[0].presentation,
            (PresentationOptions{.banner = true, .list = true, .sound = true}));
}

TEST_F(AppDelegateTest, ImagesThatAreMissingAreLoggedAndTheLaunchGoesOn) {
  memory.images.images.clear();
  launch();
  EXPECT_THAT(log, IsSupersetOf({"The image “statusIcon” is missing from the resources.",
                                 "The image “applicationIcon” is missing from the resources."}));
  EXPECT_FALSE(memory.statusItem.image());
  EXPECT_THAT(shownMenu(), Contains("Quit Quillmar"));
}

TEST_F(AppDelegateTest, TheStatusIconIsATemplateImage) {
  launch();
  ASSERT_TRUE(memory.statusItem.image());
  EXPECT_TRUE(memory.statusItem.image()->isTemplate);
}

TEST_F(AppDelegateTest, WithoutTheStatusIconTheLaunchContinues) {
  memory.images.images.clear();
  launch();
  EXPECT_FALSE(memory.statusItem.image());
  EXPECT_THAT(shownMenu(), ElementsAre("About Quillmar", "Settings...", "---", "Quit Quillmar"));
}

TEST_F(AppDelegateTest, ASavedChangeRebuildsTheMenu) {
  launch();
  addItem("New", "true");
  EXPECT_THAT(shownMenu(),
              ElementsAre("New", "---", "About Quillmar", "Settings...", "---", "Quit Quillmar"));
}

TEST_F(AppDelegateTest, AChosenItemRunsAsTheDocumentHasItNow) {
  MenuItem item = addItem("Greet", "echo old");
  launch();
  item.command.value = "echo new";
  settings.config.categories[0].items[0] = item;
  memory.statusItem.click({"Greet"});
  memory.queues.runAll();
  ASSERT_THAT(memory.processes.launched(), SizeIs(1));
  EXPECT_EQ(memory.processes.launched()[0].arguments.back(), "echo new");
}

TEST_F(AppDelegateTest, AnActionRunsWithTheActivationOfItsClickAndNoOlderOne) {
  MenuItem& item = settings.config.categories.emplace_back().items.emplace_back();
  item.id = "1";
  item.title = "Ask";
  item.confirmBeforeRunning = true;
  launch();
  const auto activationAfter = [&](Activation activation) {
    memory.statusItem.click(memory.statusItem.open(), {"", "Ask"}, std::move(activation));
    memory.queues.runAll();
    return memory.windows.lastActivation();
  };
  EXPECT_EQ(activationAfter({70, "token"}), (Activation{70, "token"}));
  EXPECT_EQ(activationAfter({}), Activation{});
}

TEST_F(AppDelegateTest, AChosenItemThatIsGoneDoesNothing) {
  addItem("Greet", "echo hello");
  launch();
  settings.config.categories.clear();
  memory.statusItem.click({"Greet"});
  memory.queues.runAll();
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

TEST_F(AppDelegateTest, AHotKeyRunsItsItemAsTheDocumentHasItNow) {
  addItemWithHotKey("Greet", "echo old");
  launch();
  settings.config.categories[0].items[0].command.value = "echo new";
  press();
  ASSERT_THAT(memory.processes.launched(), SizeIs(1));
  EXPECT_EQ(memory.processes.launched()[0].arguments.back(), "echo new");
}

TEST_F(AppDelegateTest, AHotKeyWhoseItemIsGoneDoesNothing) {
  addItemWithHotKey("Greet", "echo hello");
  launch();
  settings.config.categories.clear();
  press();
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
  EXPECT_THAT(memory.notifications.shown(), IsEmpty());
}

TEST_F(AppDelegateTest, ASavedChangeRegistersHotKeysAgain) {
  launch();
  addItemWithHotKey("Greet", "echo hello");
  press();
  EXPECT_THAT(memory.processes.launched(), SizeIs(1));
  settings.setItemEnabled("id of Greet", settings.config.categories[0].id, false);
  press();
  EXPECT_THAT(memory.processes.launched(), SizeIs(1));
}

TEST_F(AppDelegateTest, APromptOfAHotKeyIsShownWithTheActivationOfThePress) {
  addItemWithHotKey("Ask", "echo {{input}}");
  launch();
  press({70, "token"});
  EXPECT_EQ(memory.windows.lastActivation(), (Activation{70, "token"}));
}

TEST_F(AppDelegateTest, AHotKeyDoesNothingAfterTheDelegateIsDestroyed) {
  addItemWithHotKey("Greet", "echo hello");
  {
    AppDelegate other(delegateCollaborators(memory.platform, settings, runner, hotKeys,
                                            importCoordinator, updaterManagerOnFirstUse, center,
                                            logLine()));
    other.applicationWillFinishLaunching();
    other.applicationDidFinishLaunching();
  }
  press();
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

TEST_F(AppDelegateTest, AnEntryWithAnUnknownIdDoesNothing) {
  addItem("Greet", "echo hello");
  launch();
  memory.statusItem.setMenu({.entries = {ActionEntry{.title = "Odd"}}});
  ASSERT_TRUE(memory.statusItem.click({"Odd"}));
  memory.queues.runAll();
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
}

TEST_F(AppDelegateTest, SettingsShowsOneWindowThatIsKept) {
  addItem("Greet", "echo hello");
  launch();
  const auto chooseSettings = [this](std::uint32_t timestamp) {
    memory.statusItem.click(memory.statusItem.open(), {"Settings..."},
                            {.timestamp = timestamp, .token = ""});
    memory.queues.runAll();
  };
  chooseSettings(1);
  ASSERT_THAT(memory.windows.windows(), SizeIs(1));
  Window* const window = memory.windows.frontWindow();
  EXPECT_EQ(window->title(), "Quillmar Settings");
  window->close();
  chooseSettings(2);
  EXPECT_EQ(memory.windows.frontWindow(), window);
  EXPECT_EQ(memory.windows.lastActivation().timestamp, 2U);
}

TEST_F(AppDelegateTest, AnEditInTheSettingsWindowChangesTheMenuTheHotKeysAndTheFile) {
  addItemWithHotKey("Greet", "echo hello");
  launch();
  delegate.openSettings();
  auto* const outline = viewsOf<OutlineView>(*memory.windows.frontWindow()).at(0);
  ASSERT_EQ(outline->rowCount(), 2U);
  outline->select(1);
  outline->key(pressOf(keys::space));
  EXPECT_THAT(shownMenu(), ElementsAre("About Quillmar", "Settings...", "---", "Quit Quillmar"));
  EXPECT_THAT(memory.hotKeys.registered(), IsEmpty());
  EXPECT_THAT(memory.files.contents("/home/user/.config/Quillmar/settings.json").value(),
              HasSubstr("\"isEnabled\" : false"));
}

TEST_F(AppDelegateTest, ASettingsWindowThatCannotBeShownIsLoggedAndReportedInANotification) {
  launch();
  log.clear();
  memory.windows.failure = Error{"There is no display."};
  delegate.openSettings();
  EXPECT_THAT(log, ElementsAre("Could not show the window “Settings”: There is no display."));
  ASSERT_THAT(memory.notifications.shown(), SizeIs(1));
  EXPECT_EQ(memory.notifications.shown()[0].notification.title, "Settings");
}

TEST_F(AppDelegateTest, AboutShowsOneWindowThatIsKept) {
  launch();
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
  const auto chooseAbout = [this](std::uint32_t timestamp = 0) {
    memory.statusItem.click(memory.statusItem.open(), {"About Quillmar"},
                            {.timestamp = timestamp, .token = ""});
    memory.queues.runAll();
  };
  chooseAbout(1);
  ASSERT_THAT(memory.windows.windows(), SizeIs(1));
  Window* const window = memory.windows.frontWindow();
  EXPECT_EQ(memory.windows.titleOnScreen(*window), "About Quillmar");
  EXPECT_EQ(memory.windows.lastActivation().timestamp, 1u);

  chooseAbout(2);
  EXPECT_THAT(memory.windows.windows(), ElementsAre(window));
  EXPECT_EQ(memory.windows.lastActivation().timestamp, 2u);

  window->performClose();
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
  chooseAbout();
  EXPECT_THAT(memory.windows.windows(), ElementsAre(window));
}

TEST_F(AppDelegateTest, AboutEnablesItsUpdateButtonEachTimeItIsShown) {
  configureUpdates();
  launch();
  delegate.showAbout();
  Button* const button = buttonTitled(*memory.windows.frontWindow(), "Check for Updates…");
  ASSERT_NE(button, nullptr);
  EXPECT_TRUE(memory.windows.widget(*button)->enabled);
  button->setEnabled(false);
  delegate.showAbout();
  EXPECT_TRUE(memory.windows.widget(*button)->enabled);
}

TEST_F(AppDelegateTest, ALinkOfTheAboutWindowThatCannotBeOpenedIsReportedInANotification) {
  memory.bundle.information = {{"QuillmarSiteURL", "https://quillmar.example"}};
  memory.workspace.error = Error{"There is no browser."};
  launch();
  delegate.showAbout();
  buttonTitled(*memory.windows.frontWindow(), "quillmar.example")->press();
  memory.queues.runAll();
  ASSERT_THAT(memory.notifications.shown(), SizeIs(1));
  EXPECT_EQ(memory.notifications.shown()[0].notification.body, "There is no browser.");
}

TEST_F(AppDelegateTest, AnAboutWindowThatCannotBeShownIsLoggedAndReportedInANotification) {
  launch();
  log.clear();
  memory.windows.failure = Error{"There is no display."};
  memory.statusItem.click({"About Quillmar"});
  memory.queues.runAll();
  EXPECT_THAT(log, ElementsAre("Could not show the window “About Quillmar”: There is no display."));
  ASSERT_THAT(memory.notifications.shown(), SizeIs(1));
  EXPECT_EQ(memory.notifications.shown()[0].notification.title, "About Quillmar");
  EXPECT_EQ(memory.notifications.shown()[0].notification.body, "There is no display.");

  memory.windows.failure.reset();
  delegate.showAbout();
  EXPECT_THAT(memory.windows.windows(), SizeIs(1));
}

TEST_F(AppDelegateTest, LaunchingMakesTheOneUpdater) {
  EXPECT_THAT(memory.updaters.made, IsEmpty());
  launch();
  addItem("New", "true");
  EXPECT_THAT(memory.updaters.made, ElementsAre(false));
}

TEST_F(AppDelegateTest, ConfiguredUpdatesAreInTheMenuFromTheFirstOneOn) {
  configureUpdates();
  launch();
  EXPECT_THAT(memory.updaters.made, ElementsAre(true));
  EXPECT_THAT(shownMenu(), ElementsAre("About Quillmar", "Settings...", "Check for Updates...",
                                       "---", "Quit Quillmar"));
  addItem("New", "true");
  EXPECT_THAT(shownMenu(), Contains("Check for Updates..."));
}

TEST_F(AppDelegateTest, CheckForUpdatesStartsACheck) {
  configureUpdates();
  launch();
  EXPECT_EQ(memory.updaters.checks, 0);
  ASSERT_TRUE(memory.statusItem.click({"Check for Updates..."}));
  memory.queues.runAll();
  EXPECT_EQ(memory.updaters.checks, 1);
}

TEST_F(AppDelegateTest, CheckingForUpdatesThatAreNotConfiguredDoesNothingAndShowsNothing) {
  launch();
  log.clear();
  memory.statusItem.setMenu(
      {.entries = {ActionEntry{.title = "Check", .id = "check-for-updates"}}});
  ASSERT_TRUE(memory.statusItem.click({"Check"}));
  memory.queues.runAll();
  EXPECT_EQ(memory.updaters.checks, 0);
  EXPECT_THAT(memory.processes.launched(), IsEmpty());
  EXPECT_THAT(memory.notifications.shown(), IsEmpty());
  EXPECT_THAT(memory.windows.windows(), IsEmpty());
  EXPECT_THAT(log, IsEmpty());
  EXPECT_THAT(shownMenu(), ElementsAre("Check"));
  EXPECT_FALSE(memory.application.terminated);
}

TEST_F(AppDelegateTest, QuitTerminatesTheApplication) {
  launch();
  memory.statusItem.click({"Quit Quillmar"});
  memory.queues.runAll();
  EXPECT_TRUE(memory.application.terminated);
}

using Events = std::vector<std::string>;

/// Records the request for permission, and asks the delegate, if there is one, to record itself.
class RecordingNotifications final : public UserNotificationCenter {
 public:
  explicit RecordingNotifications(Events& events) : events_(events) {}

  void requestAuthorization(AuthorizationOptions /*options*/,
                            std::function<void(bool granted)> /*completion*/) override {
    presentation({});
    events_.emplace_back("permission");
  }
  void add(UserNotification /*notification*/,
           std::function<void(std::optional<Error>)> /*completion*/) override {}

 private:
  Events& events_;
};

/// Records what it gets. Posts a change when it gets the first menu, which an observer of changes
/// would answer with another menu.
class RecordingStatusItem final : public StatusItem {
 public:
  RecordingStatusItem(Events& events, NotificationCenter& center)
      : events_(events), center_(center) {}

  void setImage(std::optional<Image> /*image*/) override { events_.emplace_back("image"); }
  void setMenu(Menu /*menu*/) override {
    events_.emplace_back("menu");
    if (!std::exchange(hasPosted_, true)) center_.post(menuItemSettingsChanged);
  }

 private:
  Events& events_;
  NotificationCenter& center_;
  bool hasPosted_ = false;
};

/// Records registrations. Posts a change at the first one, as above.
class RecordingHotKeys final : public HotKeys {
 public:
  RecordingHotKeys(Events& events, NotificationCenter& center) : events_(events), center_(center) {}

  Result<HotKeyReference, HotKeyStatus> registerHotKey(const HotKeyRequest& /*request*/) override {
    events_.emplace_back("hot key");
    if (!std::exchange(hasPosted_, true)) center_.post(menuItemSettingsChanged);
    return HotKeyReference{};
  }
  void unregisterHotKey(HotKeyReference /*reference*/) override {
    events_.emplace_back("no hot key");
  }

 private:
  Events& events_;
  NotificationCenter& center_;
  bool hasPosted_ = false;
};

class RecordingAppDelegate final : public AppDelegate {
 public:
  RecordingAppDelegate(Events& events, Collaborators collaborators)
      : AppDelegate(std::move(collaborators)), events_(events) {}

  PresentationOptions willPresent(const UserNotification& notification) override {
    events_.emplace_back("delegate");
    return AppDelegate::willPresent(notification);
  }

 private:
  Events& events_;
};

/// A delegate whose services record events. The document has one item with a hot key.
class AppDelegateOrderTest : public AppDelegateTest {
 protected:
  AppDelegateOrderTest() {
    MenuItem item;
    item.id = "1";
    item.shortcut.emplace();
    settings.config.categories.emplace_back().items = {item};
  }

  UpdaterManager& recordedUpdaterManager() {
    events.emplace_back("updater");
    // The second request is the one at the end of the launch. By then the delegate observes
    // changes.
    if (std::ranges::count(events, "updater") == 2) center.post(menuItemSettingsChanged);
    return updaterManagerOnFirstUse();
  }

  Events events;
  RecordingNotifications notifications{events};
  RecordingStatusItem statusItem{events, center};
  RecordingHotKeys recordingHotKeys{events, center};
  Platform platform{
      .application = memory.application,
      .queues = memory.queues,
      .environment = memory.environment,
      .userDatabase = memory.userDatabase,
      .userDirectories = memory.userDirectories,
      .files = memory.files,
      .bundle = memory.bundle,
      .images = memory.images,
      .processes = memory.processes,
      .appleScript = memory.appleScript,
      .workspace = memory.workspace,
      .windows = memory.windows,
      .pasteboard = memory.pasteboard,
      .notifications = notifications,
      .statusItem = statusItem,
      .hotKeys = recordingHotKeys,
      .updaters = memory.updaters,
      .loginItem = memory.loginItem,
      .downloader = memory.downloader,
  };
  HotKeyManager manager{hotKeyCollaborators(platform, settings, logLine())};
  RecordingAppDelegate recorded{
      events,
      delegateCollaborators(
          platform, settings, runner, manager, importCoordinator,
          [this]() -> UpdaterManager& { return recordedUpdaterManager(); }, center, logLine())};
};

TEST_F(AppDelegateOrderTest, TheHandlerOfHotKeysIsInstalledBeforeLaunchingFinishes) {
  recorded.applicationWillFinishLaunching();
  EXPECT_TRUE(manager.handler);
  EXPECT_THAT(events, IsEmpty());
}

TEST_F(AppDelegateOrderTest, TheLaunchKeepsItsOrder) {
  recorded.applicationWillFinishLaunching();
  recorded.applicationDidFinishLaunching();
  EXPECT_THAT(events, ElementsAre("delegate", "permission", "image", "updater", "menu", "hot key",
                                  // The updater of the launch, and what its change causes.
                                  "updater", "updater", "menu", "no hot key", "hot key"));
}

TEST_F(AppDelegateOrderTest, ASavedChangeRebuildsTheMenuAndThenRegistersHotKeysAgain) {
  recorded.applicationWillFinishLaunching();
  recorded.applicationDidFinishLaunching();
  events.clear();
  settings.save();
  EXPECT_THAT(events, ElementsAre("updater", "menu", "no hot key", "hot key"));
}

}  // namespace
}  // namespace quillmar
