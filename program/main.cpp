// Parses the command line and runs the resident program or a sub-command.

#include <string>
#include <variant>
#include <vector>

#include "cli/arguments.h"
#include "cli/console.h"
#include "platform/environment.h"
#include "platform/linux/application/process_environment.h"
#include "platform/result.h"
#include "program/resident_program.h"
#include "program/terminal_commands.h"

namespace quillmar {
namespace {

/// A visitor for std::visit, made of one lambda for each alternative.
template <class... Handlers>
struct Overloaded : Handlers... {
  using Handlers::operator()...;
};
template <class... Handlers>
Overloaded(Handlers...) -> Overloaded<Handlers...>;

ExitStatus dispatch(const Invocation& invocation, const Environment& environment,
                    Console& console) {
  return std::visit(
      Overloaded{
          [&](const ResidentInvocation& resident) {
            return runResidentProgram(resident, environment, console);
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
            return listItemsFromTerminal(list, environment, console);
          },
          [&](const SettingsFileInvocation&) { return printSettingsFile(environment, console); },
          [&](const CheckInvocation& check) { return checkFilesFromTerminal(check, console); },
          [&](const MenuInvocation&) { return showMenu(environment, console); },
          [&](const RunInvocation& run) { return runItemFromTerminal(run, environment, console); },
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
