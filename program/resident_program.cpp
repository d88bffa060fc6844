#include "program/resident_program.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>

#include "app/app_delegate.h"
#include "commands/command_environment.h"
#include "commands/command_runner.h"
#include "config/settings_manager.h"
#include "platform/linux/application/application_instance.h"
#include "platform/linux/application/broken_pipes.h"
#include "platform/linux/application/platform_data.h"
#include "platform/linux/application/running_instance.h"
#include "platform/linux/desktop_platform.h"
#include "platform/log.h"
#include "platform/pasteboard.h"
#include "platform/platform.h"
#include "platform/result.h"
#include "shortcuts/hot_key_manager.h"

namespace quillmar {

namespace {

void notify(const std::string& title, const std::string& body) {
  CommandRunner::shared().notify(title, body);
}

/// Ends the process without waiting for the threads of background commands, which may still use
/// objects that a return from main() would destroy.
[[noreturn]] void endProcess(int status) {
  flushStandardOutputLog();
  std::fflush(nullptr);
  std::_Exit(status);
}

}  // namespace

ExitStatus runResidentProgram(const Environment& environment, Console& console) {
  ignoreBrokenPipes();
  const Environment commandEnvironment = withoutActivation(environment);
  std::optional<DesktopPlatform> desktop;
  std::optional<ApplicationInstance> instance;
  const auto showMenu = [&] { return desktop->showMenu(instance->takeActivation()); };
  instance.emplace(ApplicationInstance::Handlers{
      .activate =
          [&] {
            // The program was started again, perhaps because there is no icon to click. The window
            // system logs a failure.
            if (!desktop->showsStatusIcon()) (void)showMenu();
          },
      .showMenu = showMenu,
      .setClipboard =
          [&](std::string text) { desktop->services().pasteboard.setString(std::move(text)); },
      .notify = notify,
      .hotKeyReport =
          [] {
            return HotKeyReport{SettingsManager::shared().settingsFileURL(),
                                HotKeyManager::shared().unregisteredHotKeys()};
          },
  });
  const auto start = instance->start(environment);
  if (!start) {
    console.printError(start.error().description + "\n");
    return ExitStatus::failure;
  }
  if (start.value() == ApplicationInstance::Start::alreadyRunning) {
    // The result is ignored: the message below tells the user enough.
    (void)RunningInstance(environment).activate();
    console.print("Quillmar is already running.\n");
    return ExitStatus::success;
  }

  instance->setActivation(activationOf(environment));
  desktop.emplace(commandEnvironment, *instance,
                  DesktopPlatform::Options{.name = "Quillmar",
                                           .version = QUILLMAR_VERSION,
                                           .commandEnvironment = augmentedEnvironment,
                                           .notify = notify});
  Platform::install(desktop->services());
  AppDelegate delegate({});
  delegate.applicationWillFinishLaunching();
  delegate.applicationDidFinishLaunching();
  const int status = instance->run();
  desktop->saveClipboardForQuit();
  endProcess(status);
}

}  // namespace quillmar
