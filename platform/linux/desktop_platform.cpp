#include "platform/linux/desktop_platform.h"

#include <chrono>
#include <optional>
#include <utility>

#include "platform/linux/appearance/appearance.h"
#include "platform/linux/application/application_instance.h"
#include "platform/linux/application/restart_program.h"
#include "platform/linux/bus/run_later.h"
#include "platform/linux/hot_keys/desktop_hot_keys.h"
#include "platform/linux/status_item/panel_traits.h"
#include "platform/log.h"

namespace quillmar {

DesktopPlatform::DesktopPlatform(const Environment& environment, ApplicationInstance& instance,
                                 Options options)
    : system_(environment, PosixProcesses::Terminal::detach, options.commandEnvironment),
      queues_(mainQueue_),
      images_(system_.bundle.iconThemePath(),
              IconThemes::ofUser(environment, system_.userDirectories.homeDirectory())),
      windows_(LoadedWindowSystem::moduleOfThisProgram(),
               {.mainQueue = mainQueue_,
                .environment = environment,
                .applicationId = applicationId,
                .applicationName = options.name,
                .applicationVersion = options.version,
                .iconThemePath = system_.bundle.iconThemePath(),
                .log = logToStandardOutput,
                .restart = [&environment] { restartProgram(environment); }},
               instance.mainLoop()),
      workspace_(environment, system_.files, system_.processes, instance.connection()),
      pasteboard_(environment, logToStandardOutput),
      notifications_(instance.connection()),
      notifierItem_(instance.connection(), mainQueue_,
                    {.id = applicationId,
                     .title = options.name,
                     .iconThemePath = system_.bundle.iconThemePath(),
                     .pixmapDirectory = system_.bundle.pixmapDirectory(),
                     .areIconsRegistered = images_.areRegistered(),
                     .panel = panelTraitsOf(environment)}),
      appearance_(instance.connection(),
                  AppearanceSettings(environment, system_.userDirectories.homeDirectory()),
                  [this](Appearance appearance) { notifierItem_.setAppearance(appearance); }),
      trays_(environment),
      statusItem_({.notifier = notifierItem_,
                   .windows = windows_,
                   .trays = trays_,
                   .runLater =
                       [bus = instance.connection()](std::chrono::milliseconds delay,
                                                     TaskQueue::Task task) {
                         return runLater(bus, delay, std::move(task));
                       }}),
      hotKeys_(makeDesktopHotKeys(environment)),
      updaters_(std::move(options.notify)),
      loginItem_(AutostartLoginItem::pathOfThisProgram(), environment, system_.userDirectories,
                 system_.files),
      downloader_(mainQueue_, {.transfer = withProxyOf(environment, {})}),
      services_{
          .application = instance,
          .queues = queues_,
          .environment = environment,
          .userDatabase = system_.userDatabase,
          .userDirectories = system_.userDirectories,
          .files = system_.files,
          .bundle = system_.bundle,
          .images = images_,
          .processes = system_.processes,
          .appleScript = system_.appleScript,
          .workspace = workspace_,
          .windows = windows_,
          .pasteboard = pasteboard_,
          .notifications = notifications_,
          .statusItem = statusItem_,
          .hotKeys = *hotKeys_,
          .updaters = updaters_,
          .loginItem = loginItem_,
          .downloader = downloader_,
      } {
  notifierItem_.setAppearance(appearance_.current());
  notifierItem_.setOpenHandler(
      [this](std::optional<ScreenPoint> position, const Activation& activation) {
        // The window system logs a failure.
        (void)statusItem_.popUp(activation, position);
      });
  notifierItem_.setHostHandler([this](StatusNotifierHost host) { statusItem_.setHost(host); });
}

}  // namespace quillmar
