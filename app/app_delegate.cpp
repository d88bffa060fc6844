#include "app/app_delegate.h"

#include <string>
#include <utility>

#include "about/about_window_controller.h"
#include "app/starter_pack.h"
#include "app/status_menu_action.h"
#include "app/status_menu_builder.h"
#include "app/welcome_window_controller.h"
#include "import/url.h"
#include "platform/application.h"
#include "platform/updater.h"
#include "platform/widgets/button.h"
#include "platform/workspace.h"
#include "settings_ui/settings_window_controller.h"

namespace quillmar {

AppDelegate::AppDelegate(Collaborators collaborators) : collaborators_(std::move(collaborators)) {}

AppDelegate::~AppDelegate() {
  collaborators_.importCoordinator.settingsWindowProvider = nullptr;
  collaborators_.hotKeys.handler = nullptr;
  collaborators_.statusItem.setActionHandler(nullptr);
  collaborators_.notifications.setDelegate(nullptr);
}

void AppDelegate::applicationWillFinishLaunching() {
  collaborators_.importCoordinator.settingsWindowProvider = [this] { return settingsWindow(); };
  collaborators_.hotKeys.handler = [this](const std::string& itemId) { runCommand(itemId); };
}

void AppDelegate::applicationDidFinishLaunching() {
  collaborators_.notifications.setDelegate(this);
  collaborators_.notifications.requestAuthorization({.alert = true, .sound = true, .badge = true},
                                                    [log = collaborators_.log](bool granted) {
                                                      if (granted)
                                                        log("Notification permission granted");
                                                    });

  for (const char* const name : {"statusIcon", "applicationIcon"}) {
    if (collaborators_.images.named(name)) continue;
    collaborators_.log(std::string("The image “") + name + "” is missing from the resources.");
  }
  std::optional<Image> statusIcon = collaborators_.images.named("statusIcon");
  if (statusIcon) statusIcon->isTemplate = true;
  collaborators_.statusItem.setImage(std::move(statusIcon));
  collaborators_.statusItem.setActionHandler(
      [this](const ActionEntry& entry, const Activation& activation) {
        collaborators_.application.setActivation(activation);
        if (const auto action = statusMenuAction(entry.id)) perform(*action);
      });

  installStarterPackIfFirstLaunch();
  rebuildMenu();
  collaborators_.hotKeys.reloadFromSettings();
  settingsObservation_ = collaborators_.notificationCenter.addObserver(
      menuItemSettingsChanged, [this] { menuSettingsChanged(); });
  // Create the updater at launch even if no menu entry needs it yet.
  collaborators_.updaterManager();
}

PresentationOptions AppDelegate::willPresent(const UserNotification& /*notification*/) {
  return {.banner = true, .list = true, .sound = true};
}

void AppDelegate::installStarterPackIfFirstLaunch() {
  if (!collaborators_.settings.isFirstLaunch()) return;
  const std::size_t installed = installStarterPack(collaborators_.bundle, collaborators_.files,
                                                   collaborators_.settings, collaborators_.log);

  welcomeWindowController_ = std::make_unique<WelcomeWindowController>(
      collaborators_.windows, collaborators_.images, collaborators_.bundle,
      [this](const std::string& url) { openURL(url); });
  welcomeWindowController_->buildUI(installed);
  welcomeWindowController_->openSettings = [this] { openSettings(); };
  const Result<void> shown =
      welcomeWindowController_->window().show(collaborators_.application.takeActivation());
  if (!shown) {
    collaborators_.log("Could not show the welcome window: " + shown.error().description);
  }
}

void AppDelegate::rebuildMenu() {
  collaborators_.statusItem.setMenu(buildStatusMenu(collaborators_.settings.config,
                                                    collaborators_.images,
                                                    collaborators_.updaterManager().isConfigured));
}

void AppDelegate::menuSettingsChanged() {
  rebuildMenu();
  collaborators_.hotKeys.reloadFromSettings();
}

void AppDelegate::openURLs(const std::vector<std::string>& urls) {
  for (const std::string& url : urls) {
    if (isFilePathOrUrl(url)) {
      collaborators_.importCoordinator.open(url);
    } else {
      collaborators_.importCoordinator.handle(url);
    }
  }
}

void AppDelegate::perform(const StatusMenuAction& action) {
  switch (action.kind) {
    case StatusMenuAction::Kind::runCommand:
      runCommand(action.itemId);
      break;
    case StatusMenuAction::Kind::showAbout:
      showAbout();
      break;
    case StatusMenuAction::Kind::openSettings:
      openSettings();
      break;
    case StatusMenuAction::Kind::checkForUpdates:
      checkForUpdates();
      break;
    case StatusMenuAction::Kind::quit:
      quitApp();
      break;
  }
}

void AppDelegate::runCommand(const std::string& itemId) {
  const auto found = collaborators_.settings.getItem(itemId);
  if (found) collaborators_.commandRunner.run(found->item);
}

void AppDelegate::openSettings() {
  if (!settingsWindowController_) {
    settingsWindowController_ =
        std::make_unique<SettingsWindowController>(SettingsWindowController::Collaborators{
            .settings = collaborators_.settings,
            .updaterManager = collaborators_.updaterManager(),
            .importCoordinator = collaborators_.importCoordinator,
            .files = collaborators_.files,
            .mainQueue = collaborators_.mainQueue,
            .windows = collaborators_.windows,
            .images = collaborators_.images,
            .loginItem = collaborators_.loginItem,
            .workspace = collaborators_.workspace,
            .notificationCenter = collaborators_.notificationCenter,
            .log = collaborators_.log});
  }
  const Result<void> shown =
      settingsWindowController_->show(collaborators_.application.takeActivation());
  if (!shown) reportFailure("Settings", shown.error());
}

Window* AppDelegate::settingsWindow() {
  openSettings();
  return &settingsWindowController_->window();
}

void AppDelegate::showAbout() {
  const UpdaterManager& updaterManager = collaborators_.updaterManager();
  if (!aboutWindowController_) {
    aboutWindowController_ = std::make_unique<AboutWindowController>(
        collaborators_.windows, collaborators_.images, collaborators_.bundle, updaterManager,
        [this](const std::string& url) { openURL(url); });
  }
  if (Button* const button = aboutWindowController_->updateButton()) {
    button->setEnabled(updaterManager.isConfigured);
  }
  const Result<void> shown =
      aboutWindowController_->window().show(collaborators_.application.takeActivation());
  if (!shown) reportFailure("About Quillmar", shown.error());
}

void AppDelegate::reportFailure(const std::string& window, const Error& error) {
  collaborators_.log("Could not show the window “" + window + "”: " + error.description);
  collaborators_.commandRunner.notify(window, error.description);
}

void AppDelegate::checkForUpdates() {
  const UpdaterManager& manager = collaborators_.updaterManager();
  if (manager.isConfigured) manager.controller->checkForUpdates();
}

void AppDelegate::openURL(const std::string& url) {
  collaborators_.workspace.openURL(
      url, [&runner = collaborators_.commandRunner](const Result<void>& opened) {
        if (!opened) runner.notify("Quillmar", opened.error().description);
      });
}

void AppDelegate::quitApp() {
  collaborators_.application.terminate();
}

}  // namespace quillmar
