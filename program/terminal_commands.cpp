#include "program/terminal_commands.h"

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "cli/commands.h"
#include "cli/run_command.h"
#include "cli/terminal_prompts.h"
#include "commands/command_environment.h"
#include "commands/command_runner.h"
#include "config/settings_location.h"
#include "config/settings_manager.h"
#include "platform/linux/application/broken_pipes.h"
#include "platform/linux/application/running_instance.h"
#include "platform/linux/files/password_database.h"
#include "platform/linux/files/posix_file_system.h"
#include "platform/linux/files/xdg_directories.h"
#include "platform/linux/system_services.h"
#include "platform/linux/workspace/desktop_workspace.h"
#include "platform/log.h"
#include "platform/memory/memory_task_queues.h"
#include "platform/result.h"
#include "platform/text.h"
#include "shortcuts/unregistered_hot_key.h"

namespace quillmar {

namespace {

/// The services that read the settings file.
struct SettingsServices {
  explicit SettingsServices(const Environment& environment)
      : directories(environment, PasswordDatabase()) {}

  PosixFileSystem files;
  XdgDirectories directories;
};

/// Loads the settings and runs the sub-command on them. Fails if they cannot be loaded. Folders and
/// items without an id in the file get an empty one.
template <class SubCommand>
ExitStatus withSettings(const Environment& environment, SubCommand subCommand) {
  SettingsServices services(environment);
  // Generated ids would be different in each call, so they are useless to the user.
  SettingsManager settings({.environment = environment,
                            .userDirectories = services.directories,
                            .files = services.files,
                            .log = logToStandardError,
                            .makeIdentifier = [] { return std::string(); }});
  if (settings.loadError()) return ExitStatus::failure;
  return subCommand(settings);
}

/// The hot keys that the running instance could not register, if it uses the same settings file.
/// Asks it only if the settings have hot keys.
std::vector<UnregisteredHotKey> unregisteredHotKeys(const SettingsManager& settings,
                                                    const Environment& environment,
                                                    Console& console) {
  const auto hasHotKey = [](const ItemInCategory& runnable) {
    return runnable.item.shortcut && runnable.item.shortcut->isGlobal;
  };
  if (!std::ranges::any_of(settings.allRunnableItems(), hasHotKey)) return {};
  RunningInstance instance(environment);
  if (!instance.isRunning()) return {};
  Result<HotKeyReport> report = instance.hotKeyReport();
  if (!report) {
    console.printError(report.error().description + "\n");
    return {};
  }
  if (report.value().settingsFile != text::replacingInvalidCharacters(settings.settingsFileURL())) {
    return {};
  }
  return std::move(report).value().unregistered;
}

}  // namespace

ExitStatus listItemsFromTerminal(const ListInvocation& invocation, const Environment& environment,
                                 Console& console) {
  return withSettings(environment, [&](const SettingsManager& settings) {
    return listItems(invocation, settings, unregisteredHotKeys(settings, environment, console),
                     console);
  });
}

ExitStatus printSettingsFile(const Environment& environment, Console& console) {
  SettingsServices services(environment);
  console.print(settingsFilePath(environment, services.directories, services.files) + "\n");
  return ExitStatus::success;
}

ExitStatus checkFilesFromTerminal(const CheckInvocation& invocation, Console& console) {
  return checkFiles(invocation, PosixFileSystem(), console);
}

ExitStatus showMenu(const Environment& environment, Console& console) {
  ignoreBrokenPipes();
  const auto shown = RunningInstance(environment).showMenu();
  if (shown) return ExitStatus::success;
  console.printError(shown.error().description + "\n");
  return ExitStatus::failure;
}

ExitStatus runItemFromTerminal(const RunInvocation& invocation, const Environment& environment,
                               Console& console) {
  return withSettings(environment, [&](SettingsManager& settings) {
    ignoreBrokenPipes();
    SystemServices system(environment, PosixProcesses::Terminal::inherit, augmentedEnvironment);
    MemoryTaskQueues queues;
    DesktopWorkspace workspace(environment, system.files, system.processes, nullptr);
    TerminalPrompts prompts(console, invocation.yes, invocation.input);
    RunningInstance instance(environment);
    DeliveryFailures failures;
    RemotePasteboard pasteboard(instance, failures);
    RemoteNotifications notifications(instance, failures, queues.mainQueue());
    CommandRunner runner({
        .settings = settings,
        .prompts = prompts,
        .queues = queues,
        .environment = environment,
        .userDatabase = system.userDatabase,
        .userDirectories = system.userDirectories,
        .files = system.files,
        .processes = system.processes,
        .appleScript = system.appleScript,
        .workspace = workspace,
        .pasteboard = pasteboard,
        .notifications = notifications,
        .log = logToStandardError,
    });

    const ExitStatus status = runItem(invocation, settings, runner, queues, console);
    if (const auto sentence = failures.sentence()) console.printError(*sentence + "\n");
    return status;
  });
}

}  // namespace quillmar
