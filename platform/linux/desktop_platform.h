// Owns every service of a Linux desktop session and provides them as a Platform. Created once, by
// the resident program. Main thread.

#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/application.h"
#include "platform/hot_keys.h"
#include "platform/linux/appearance/appearance_watch.h"
#include "platform/linux/icons/icon_theme_images.h"
#include "platform/linux/login/autostart_login_item.h"
#include "platform/linux/network/curl_downloader.h"
#include "platform/linux/notifications/desktop_notifications.h"
#include "platform/linux/pasteboard/desktop_pasteboard.h"
#include "platform/linux/processes/linux_task_queues.h"
#include "platform/linux/processes/main_loop_task_queue.h"
#include "platform/linux/status_item/desktop_status_item.h"
#include "platform/linux/status_item/status_notifier_item.h"
#include "platform/linux/status_item/x11_tray_watch.h"
#include "platform/linux/system_services.h"
#include "platform/linux/updates/unavailable_updaters.h"
#include "platform/linux/windows/loaded_window_system.h"
#include "platform/linux/workspace/desktop_workspace.h"
#include "platform/platform.h"
#include "platform/result.h"

namespace quillmar {

class ApplicationInstance;

class DesktopPlatform {
 public:
  struct Options {
    /// The program's name as shown to the user.
    std::string name;
    std::string version;
    SystemServices::CommandEnvironment* commandEnvironment;
    /// Shows a notification. Used by the updater.
    UnavailableUpdaters::Notify notify;
  };

  /// `instance` must have been started and own the program's bus name. `environment` and `instance`
  /// must outlive the platform.
  DesktopPlatform(const Environment& environment, ApplicationInstance& instance, Options options);

  DesktopPlatform(const DesktopPlatform&) = delete;
  DesktopPlatform& operator=(const DesktopPlatform&) = delete;

  /// The services. Valid as long as this object.
  Platform& services() { return services_; }

  /// True while the status icon is visible in a panel or tray, as far as is known.
  bool showsStatusIcon() const { return statusItem_.isShown(); }

  /// Opens the status menu at the pointer. The error is a full sentence.
  Result<void> showMenu(const Activation& activation) { return statusItem_.popUp(activation); }

  /// Hands the clipboard's contents to the desktop before the process ends.
  void saveClipboardForQuit() { pasteboard_.saveForQuit(); }

 private:
  SystemServices system_;
  MainLoopTaskQueue mainQueue_;
  LinuxTaskQueues queues_;
  IconThemeImages images_;
  LoadedWindowSystem windows_;
  DesktopWorkspace workspace_;
  DesktopPasteboard pasteboard_;
  DesktopNotifications notifications_;
  StatusNotifierItem notifierItem_;
  AppearanceWatch appearance_;
  X11TrayWatch trays_;
  DesktopStatusItem statusItem_;
  std::unique_ptr<HotKeys> hotKeys_;
  UnavailableUpdaters updaters_;
  AutostartLoginItem loginItem_;
  CurlDownloader downloader_;
  Platform services_;
};

}  // namespace quillmar
