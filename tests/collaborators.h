// The collaborators of the application's parts, taken from one platform: in tests most services are
// the in-memory ones of a MemoryPlatform.

#pragma once

#include <functional>
#include <utility>

#include "app/app_delegate.h"
#include "commands/command_runner.h"
#include "commands/prompt_panel.h"
#include "import/import_coordinator.h"
#include "platform/platform.h"
#include "shortcuts/hot_key_manager.h"

namespace quillmar {

inline PromptPanel::Collaborators promptCollaborators(Platform& platform) {
  return {
      .application = platform.application, .images = platform.images, .windows = platform.windows};
}

inline CommandRunner::Collaborators runnerCollaborators(Platform& platform,
                                                        SettingsManager& settings, Prompts& prompts,
                                                        LogLine log) {
  return {
      .settings = settings,
      .prompts = prompts,
      .queues = platform.queues,
      .environment = platform.environment,
      .userDatabase = platform.userDatabase,
      .userDirectories = platform.userDirectories,
      .files = platform.files,
      .processes = platform.processes,
      .appleScript = platform.appleScript,
      .workspace = platform.workspace,
      .pasteboard = platform.pasteboard,
      .notifications = platform.notifications,
      .log = std::move(log),
  };
}

inline HotKeyManager::Collaborators hotKeyCollaborators(Platform& platform,
                                                        SettingsManager& settings, LogLine log) {
  return {
      .settings = settings,
      .hotKeys = platform.hotKeys,
      .application = platform.application,
      .mainQueue = platform.queues.mainQueue(),
      .log = std::move(log),
  };
}

inline ImportCoordinator::Collaborators importCollaborators(Platform& platform,
                                                            SettingsManager& settings,
                                                            LogLine log) {
  return {
      .settings = settings,
      .files = platform.files,
      .downloader = platform.downloader,
      .application = platform.application,
      .windows = platform.windows,
      .log = std::move(log),
  };
}

inline AppDelegate::Collaborators delegateCollaborators(
    Platform& platform, SettingsManager& settings, CommandRunner& commandRunner,
    HotKeyManager& hotKeys, ImportCoordinator& importCoordinator,
    std::function<UpdaterManager&()> updaterManager, NotificationCenter& notificationCenter,
    LogLine log) {
  return {
      .settings = settings,
      .commandRunner = commandRunner,
      .hotKeys = hotKeys,
      .importCoordinator = importCoordinator,
      .updaterManager = std::move(updaterManager),
      .application = platform.application,
      .statusItem = platform.statusItem,
      .notifications = platform.notifications,
      .windows = platform.windows,
      .workspace = platform.workspace,
      .images = platform.images,
      .loginItem = platform.loginItem,
      .bundle = platform.bundle,
      .files = platform.files,
      .mainQueue = platform.queues.mainQueue(),
      .notificationCenter = notificationCenter,
      .log = std::move(log),
  };
}

}  // namespace quillmar
