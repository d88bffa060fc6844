#include "program/resident_program.h"

#include <cstdio>
#include <cstdlib>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "app/app_delegate.h"
#include "commands/command_environment.h"
#include "commands/command_runner.h"
#include "config/settings_manager.h"
#include "platform/linux/application/application_instance.h"
#include "platform/linux/application/broken_pipes.h"
#include "platform/linux/application/platform_data.h"
#include "platform/linux/application/running_instance.h"
#include "platform/linux/desktop_platform.h"
#include "platform/linux/files/file_url.h"
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

/// The files and links as URLs.
Result<std::vector<std::string>> urlsOf(const ResidentInvocation& invocation) {
  std::vector<std::string> urls;
  for (const std::string& argument : invocation.filesAndLinks) {
    const Result<std::string> url =
        isUrl(argument) ? Result<std::string>(argument) : fileUrl(argument);
    if (!url) return url.error();
    urls.push_back(url.value());
  }
  return urls;
}

/// Passes this start on to the running instance. Prints nothing if it opens something.
ExitStatus useRunningInstance(const std::vector<std::string>& urls, const Environment& environment,
                              Console& console) {
  RunningInstance running(environment);
  if (urls.empty()) {
    // The result is ignored: the message below tells the user enough.
    (void)running.activate();
    console.print("Quillmar is already running.\n");
    return ExitStatus::success;
  }
  if (const auto outcome = running.open(urls); !outcome) {
    console.printError(outcome.error().description + ", so nothing was opened.\n");
    return ExitStatus::failure;
  }
  return ExitStatus::success;
}

}  // namespace

ExitStatus runResidentProgram(const ResidentInvocation& invocation, const Environment& environment,
                              Console& console) {
  for (const std::string& error : invocation.errors) console.printError(error + "\n");
  const ExitStatus argumentStatus =
      invocation.errors.empty() ? ExitStatus::success : ExitStatus::usage;
  const auto urls = urlsOf(invocation);
  if (!urls) {
    console.printError(urls.error().description + "\n");
    return ExitStatus::failure;
  }
  ignoreBrokenPipes();
  const Environment commandEnvironment = withoutActivation(environment);
  std::optional<DesktopPlatform> desktop;
  std::optional<ApplicationInstance> instance;
  std::optional<AppDelegate> delegate;
  const auto showMenu = [&] { return desktop->showMenu(instance->takeActivation()); };
  instance.emplace(ApplicationInstance::Handlers{
      .activate =
          [&] {
            // The program was started again, perhaps because there is no icon to click. The window
            // system logs a failure.
            if (!desktop->showsStatusIcon()) (void)showMenu();
          },
      .open = [&](const std::vector<std::string>& opened) { delegate->openURLs(opened); },
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
    const ExitStatus opened = useRunningInstance(urls.value(), environment, console);
    return opened == ExitStatus::success ? argumentStatus : opened;
  }

  instance->setActivation(activationOf(environment));
  desktop.emplace(commandEnvironment, *instance,
                  DesktopPlatform::Options{.name = "Quillmar",
                                           .version = QUILLMAR_VERSION,
                                           .commandEnvironment = augmentedEnvironment,
                                           .notify = notify});
  Platform::install(desktop->services());
  delegate.emplace(AppDelegate::Collaborators{});
  delegate->applicationWillFinishLaunching();
  delegate->applicationDidFinishLaunching();
  delegate->openURLs(urls.value());
  const int status = instance->run();
  desktop->saveClipboardForQuit();
  endProcess(status == 0 ? static_cast<int>(argumentStatus) : status);
}

}  // namespace quillmar
