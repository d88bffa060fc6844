#include "cli/linux_program.h"

#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <functional>
#include <optional>
#include <string>
#include <utility>

#include "about/updater_manager.h"
#include "app/app_delegate.h"
#include "cli/run_command.h"
#include "cli/terminal_prompts.h"
#include "commands/command_environment.h"
#include "commands/command_runner.h"
#include "platform/linux/appearance/appearance.h"
#include "platform/linux/appearance/appearance_watch.h"
#include "platform/linux/application/application_instance.h"
#include "platform/linux/application/broken_pipes.h"
#include "platform/linux/application/platform_data.h"
#include "platform/linux/application/running_instance.h"
#include "platform/linux/bus/run_later.h"
#include "platform/linux/files/bundle_directory.h"
#include "platform/linux/files/password_database.h"
#include "platform/linux/files/posix_file_system.h"
#include "platform/linux/files/xdg_directories.h"
#include "platform/linux/icons/icon_theme_images.h"
#include "platform/linux/notifications/desktop_notifications.h"
#include "platform/linux/pasteboard/desktop_pasteboard.h"
#include "platform/linux/processes/linux_task_queues.h"
#include "platform/linux/processes/main_loop_task_queue.h"
#include "platform/linux/processes/posix_processes.h"
#include "platform/linux/processes/shell_apple_script_engine.h"
#include "platform/linux/status_item/desktop_status_item.h"
#include "platform/linux/status_item/status_notifier_item.h"
#include "platform/linux/status_item/x11_tray_watch.h"
#include "platform/linux/updates/unavailable_updaters.h"
#include "platform/linux/windows/loaded_window_system.h"
#include "platform/linux/workspace/desktop_workspace.h"
#include "platform/log.h"
#include "platform/memory/memory_application.h"
#include "platform/memory/memory_images.h"
#include "platform/memory/memory_status_item.h"
#include "platform/memory/memory_task_queues.h"
#include "platform/memory/memory_updater.h"
#include "platform/memory/memory_window_system.h"
#include "platform/platform.h"

namespace quillmar {

namespace {

/// The program's name as people know it.
constexpr const char* applicationName = "Quillmar";

/// The services that are the same in the panel and on a terminal.
struct SystemServices {
  SystemServices(const Environment& processEnvironment, PosixProcesses::Sessions sessions)
      : environment(processEnvironment),
        userDirectories(environment, userDatabase),
        bundle(BundleDirectory::ofThisProgram()),
        processes(sessions),
        appleScript(processes, [this] {
          return augmentedEnvironment(environment, userDirectories.homeDirectory(), files);
        }) {}

  const Environment& environment;
  PasswordDatabase userDatabase;
  XdgDirectories userDirectories;
  PosixFileSystem files;
  BundleDirectory bundle;
  PosixProcesses processes;
  ShellAppleScriptEngine appleScript;
  DesktopWorkspace workspace;
};

void notify(const std::string& title, const std::string& body) {
  CommandRunner::shared().notify(title, body);
}

/// The program in the panel: the desktop's services, and the application's parts on top of them.
class PanelProgram {
 public:
  PanelProgram(const Environment& environment, ApplicationInstance& instance)
      : system_(environment, PosixProcesses::Sessions::separate),
        queues_(mainQueue_),
        images_(system_.bundle.iconThemePath(),
                IconThemes::ofUser(environment, system_.userDirectories.homeDirectory())),
        windows_(LoadedWindowSystem::moduleOfThisProgram(),
                 {.mainQueue = mainQueue_,
                  .environment = system_.environment,
                  .applicationId = applicationId,
                  .applicationName = applicationName,
                  .applicationVersion = QUILLMAR_VERSION,
                  .iconThemePath = system_.bundle.iconThemePath(),
                  .log = logToStandardOutput},
                 instance.mainLoop()),
        pasteboard_(environment, logToStandardOutput),
        notifications_(instance.connection()),
        notifierItem_(instance.connection(), mainQueue_,
                      {.id = applicationId,
                       .title = applicationName,
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
        updaters_(notify),
        platform_{
            .application = instance,
            .queues = queues_,
            .environment = system_.environment,
            .userDatabase = system_.userDatabase,
            .userDirectories = system_.userDirectories,
            .files = system_.files,
            .bundle = system_.bundle,
            .images = images_,
            .processes = system_.processes,
            .appleScript = system_.appleScript,
            .workspace = system_.workspace,
            .windows = windows_,
            .pasteboard = pasteboard_,
            .notifications = notifications_,
            .statusItem = statusItem_,
            .updaters = updaters_,
        } {
    Platform::install(platform_);
    notifierItem_.setAppearance(appearance_.current());
    notifierItem_.setOpenHandler(
        [this](std::optional<ScreenPoint> position, const Activation& activation) {
          // The window system says when that fails.
          (void)statusItem_.popUp(activation, position);
        });
    notifierItem_.setHostHandler([this](StatusNotifierHost host) { statusItem_.setHost(host); });
  }

  void launch() {
    delegate_.emplace(AppDelegate::Collaborators{platform_, SettingsManager::shared(),
                                                 CommandRunner::shared(), UpdaterManager::shared});
    delegate_->applicationDidFinishLaunching();
  }

  /// The program was started again: perhaps because there is no icon to click on.
  void activate() {
    // The window system says when that fails.
    if (!statusItem_.isShown()) (void)showMenu();
  }

  Result<void> showMenu() { return statusItem_.popUp(platform_.application.takeActivation()); }

  DesktopPasteboard& pasteboard() { return pasteboard_; }

 private:
  SystemServices system_;
  MainLoopTaskQueue mainQueue_;
  LinuxTaskQueues queues_;
  IconThemeImages images_;
  LoadedWindowSystem windows_;
  DesktopPasteboard pasteboard_;
  DesktopNotifications notifications_;
  StatusNotifierItem notifierItem_;
  AppearanceWatch appearance_;
  X11TrayWatch trays_;
  DesktopStatusItem statusItem_;
  UnavailableUpdaters updaters_;
  Platform platform_;
  std::optional<AppDelegate> delegate_;
};

/// Ends the process without waiting for the threads of background commands, which may still use
/// what a return from main() would destroy.
[[noreturn]] void endProcess(int status) {
  std::fflush(nullptr);
  std::_Exit(status);
}

}  // namespace

ExitStatus liveInPanel(const Environment& environment, Console& console) {
  ignoreBrokenPipes();
  const Environment lasting = withoutActivation(environment);
  std::optional<PanelProgram> program;
  ApplicationInstance instance({
      .activate = [&] { program->activate(); },
      .showMenu = [&] { return program->showMenu(); },
      .setClipboard =
          [](std::string text) { Platform::shared().pasteboard.setString(std::move(text)); },
      .notify = notify,
  });
  const auto start = instance.start(environment);
  if (!start) {
    console.printError(start.error().description + "\n");
    return ExitStatus::failure;
  }
  if (start.value() == ApplicationInstance::Start::alreadyRunning) {
    // What it answers is nothing to the user, who sees the icon or the menu.
    (void)RunningInstance(environment).activate();
    console.print("Quillmar is already running.\n");
    return ExitStatus::success;
  }

  instance.setActivation(activationOf(environment));
  program.emplace(lasting, instance);
  program->launch();
  const int status = instance.run();
  program->pasteboard().saveForQuit();
  endProcess(status);
}

ExitStatus showMenu(const Environment& environment, Console& console) {
  ignoreBrokenPipes();
  const auto shown = RunningInstance(environment).showMenu();
  if (shown) return ExitStatus::success;
  console.printError(shown.error().description + "\n");
  return ExitStatus::failure;
}

ExitStatus runItemFromTerminal(const RunInvocation& invocation, const Environment& environment,
                               SettingsManager& settings, Console& console) {
  ignoreBrokenPipes();
  SystemServices system(environment, PosixProcesses::Sessions::shared);
  MemoryApplication application;
  MemoryTaskQueues queues;
  MemoryImages images;
  MemoryStatusItem statusItem(queues.mainQueue());
  MemoryWindowSystem windows(queues.mainQueue());
  TerminalPrompts prompts(console, invocation.yes, invocation.input);
  MemoryUpdaters updaters;
  RunningInstance instance(environment);
  LeftOut leftOut;
  RemotePasteboard pasteboard(instance, leftOut);
  RemoteNotifications notifications(instance, leftOut, queues.mainQueue());
  Platform platform{
      .application = application,
      .queues = queues,
      .environment = environment,
      .userDatabase = system.userDatabase,
      .userDirectories = system.userDirectories,
      .files = system.files,
      .bundle = system.bundle,
      .images = images,
      .processes = system.processes,
      .appleScript = system.appleScript,
      .workspace = system.workspace,
      .windows = windows,
      .pasteboard = pasteboard,
      .notifications = notifications,
      .statusItem = statusItem,
      .updaters = updaters,
  };
  CommandRunner runner(platform, settings, logToStandardError, &prompts);

  const ExitStatus status = runItem(invocation, settings, runner, queues, console);
  if (const auto sentence = leftOut.sentence()) console.printError(*sentence + "\n");
  return status;
}

}  // namespace quillmar
