// The application's controller: the launch sequence, the status item and its menu, the actions of
// the menu entries, and the windows that they open. Main thread.

#pragma once

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "about/updater_manager.h"
#include "commands/command_runner.h"
#include "config/settings_manager.h"
#include "import/import_coordinator.h"
#include "platform/log.h"
#include "platform/notification_center.h"
#include "platform/platform.h"
#include "platform/status_item.h"
#include "platform/user_notifications.h"
#include "shortcuts/hot_key_manager.h"

namespace quillmar {

class AboutWindowController;
class SettingsWindowController;
struct StatusMenuAction;
class WelcomeWindowController;

class AppDelegate : public UserNotificationCenterDelegate {
 public:
  /// Not owned; all must outlive the delegate.
  struct Collaborators {
    SettingsManager& settings = SettingsManager::shared();
    CommandRunner& commandRunner = CommandRunner::shared();
    HotKeyManager& hotKeys = HotKeyManager::shared();
    ImportCoordinator& importCoordinator = ImportCoordinator::shared();
    /// Returns the manager; the first call creates it.
    std::function<UpdaterManager&()> updaterManager = UpdaterManager::shared;
    Application& application = Platform::shared().application;
    StatusItem& statusItem = Platform::shared().statusItem;
    UserNotificationCenter& notifications = Platform::shared().notifications;
    WindowSystem& windows = Platform::shared().windows;
    Workspace& workspace = Platform::shared().workspace;
    Images& images = Platform::shared().images;
    LoginItem& loginItem = Platform::shared().loginItem;
    const Bundle& bundle = Platform::shared().bundle;
    FileSystem& files = Platform::shared().files;
    TaskQueue& mainQueue = Platform::shared().queues.mainQueue();
    NotificationCenter& notificationCenter = NotificationCenter::defaultCenter();
    LogLine log = logToStandardOutput;
  };

  explicit AppDelegate(Collaborators collaborators);
  ~AppDelegate() override;

  AppDelegate(const AppDelegate&) = delete;
  AppDelegate& operator=(const AppDelegate&) = delete;

  // The launch sequence. Each is called once, in this order.

  /// Connects the other objects to the delegate.
  void applicationWillFinishLaunching();
  void applicationDidFinishLaunching();

  /// Always banner, list and sound, so that results are shown even while a window of the program is
  /// active.
  PresentationOptions willPresent(const UserNotification& notification) override;

  /// On the first launch, merges the starter pack into the document and shows the welcome window.
  void installStarterPackIfFirstLaunch();

  /// Rebuilds the menu from the document and sets it on the status item.
  void rebuildMenu();

  /// Called when the document has changed.
  void menuSettingsChanged();

  /// The user opened files or links with the program. Each is an absolute path, a URL with the
  /// scheme "file", or a link of the program. They are handled one after another; other URLs are
  /// ignored.
  void openURLs(const std::vector<std::string>& urls);

  // Actions of menu entries.

  /// Runs the item with this id from the current document. Does nothing if the id is unknown.
  void runCommand(const std::string& itemId);
  void openSettings();
  void showAbout();
  /// Does nothing if updates are not configured.
  void checkForUpdates();
  void quitApp();

 private:
  /// Opens the settings window and returns it. It is not visible if that failed.
  Window* settingsWindow();
  void perform(const StatusMenuAction& action);
  /// Opens the URL with the default program for it. Shows a notification if that fails.
  void openURL(const std::string& url);
  /// Logs and notifies that the window could not be shown.
  void reportFailure(const std::string& window, const Error& error);

  Collaborators collaborators_;
  NotificationCenter::Observation settingsObservation_;
  // Created on first use and kept, so that a closed window opens again in the same state.
  std::unique_ptr<SettingsWindowController> settingsWindowController_;
  std::unique_ptr<WelcomeWindowController> welcomeWindowController_;
  std::unique_ptr<AboutWindowController> aboutWindowController_;
};

}  // namespace quillmar
