#include <string>
#include <variant>
#include <vector>

#include "cli/arguments.h"
#include "cli/commands.h"
#include "cli/console.h"
#include "cli/linux_program.h"
#include "config/settings_location.h"
#include "config/settings_manager.h"
#include "platform/environment.h"
#include "platform/linux/application/process_environment.h"
#include "platform/linux/files/password_database.h"
#include "platform/linux/files/posix_file_system.h"
#include "platform/linux/files/xdg_directories.h"
#include "platform/log.h"
#include "platform/result.h"

namespace quillmar {
namespace {

/// Calls the handler of the alternative that the variant holds.
template <class... Handlers>
struct Overloaded : Handlers... {
  using Handlers::operator()...;
};
template <class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

/// What sub-commands read the settings with.
struct SettingsServices {
  explicit SettingsServices(const Environment& environment)
      : directories(environment, PasswordDatabase()) {}

  PosixFileSystem files;
  XdgDirectories directories;
};

/// Runs a sub-command on the settings, in which what has no id in the file has an empty one; not to
/// be able to load them is a failure.
template <class SubCommand>
ExitStatus withSettings(const Environment& environment, SubCommand subCommand) {
  SettingsServices services(environment);
  // An id made up here would be another one the next time, so no one could use it.
  SettingsManager settings({.environment = environment,
                            .userDirectories = services.directories,
                            .files = services.files,
                            .log = logToStandardError,
                            .makeIdentifier = [] { return std::string(); }});
  if (settings.loadError()) return ExitStatus::failure;
  return subCommand(settings);
}

ExitStatus printSettingsFile(const Environment& environment, Console& console) {
  SettingsServices services(environment);
  console.print(settingsFilePath(environment, services.directories, services.files) + "\n");
  return ExitStatus::success;
}

ExitStatus dispatch(const Invocation& invocation, const Environment& environment,
                    Console& console) {
  return std::visit(
      Overloaded{
          [&](const ResidentInvocation&) -> ExitStatus {
            return liveInPanel(environment, console);
          },
          [&](const HelpInvocation&) {
            console.print(helpText());
            return ExitStatus::success;
          },
          [&](const VersionInvocation&) {
            console.print("Quillmar " QUILLMAR_VERSION "\n");
            return ExitStatus::success;
          },
          [&](const ListInvocation& list) {
            return withSettings(environment, [&](SettingsManager& settings) {
              return listItems(list, settings, console);
            });
          },
          [&](const SettingsFileInvocation&) { return printSettingsFile(environment, console); },
          [&](const CheckInvocation& check) {
            return checkFiles(check, PosixFileSystem(), console);
          },
          [&](const MenuInvocation&) { return showMenu(environment, console); },
          [&](const RunInvocation& run) {
            return withSettings(environment, [&](SettingsManager& settings) {
              return runItemFromTerminal(run, environment, settings, console);
            });
          },
      },
      invocation);
}

}  // namespace
}  // namespace quillmar

int main(int argc, char** argv) {
  using namespace quillmar;
  StandardConsole console;
  const Environment environment = snapshotProcessEnvironment();
  const Result<Invocation> invocation =
      parseArguments(std::vector<std::string>(argv + (argc > 0 ? 1 : 0), argv + argc));
  if (!invocation) {
    console.printError(invocation.error().description + "\nTry “quillmar --help”.\n");
    return static_cast<int>(ExitStatus::usage);
  }
  ExitStatus status = dispatch(invocation.value(), environment, console);
  if (console.lostOutput()) {
    console.printError(console.lostOutput()->description + "\n");
    status = ExitStatus::failure;
  }
  return static_cast<int>(status);
}
