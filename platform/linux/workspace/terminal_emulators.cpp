#include "platform/linux/workspace/terminal_emulators.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string_view>
#include <utility>
#include <vector>

#include <glib.h>

#include "platform/error_text.h"
#include "platform/linux/files/program_path.h"

namespace quillmar {

namespace {

/// What precedes the program and its arguments on a terminal's command line.
struct TerminalEmulator {
  std::string_view program;
  std::array<std::string_view, 2> option;
};

/// In the order in which they are tried.
constexpr TerminalEmulator terminalEmulators[] = {
    {"xdg-terminal-exec", {}},  {"x-terminal-emulator", {"-e"}},
    {"gnome-terminal", {"--"}}, {"konsole", {"-e"}},
    {"xfce4-terminal", {"-x"}}, {"mate-terminal", {"-x"}},
    {"kitty", {"--"}},          {"foot", {"--"}},
    {"alacritty", {"-e"}},      {"wezterm", {"start", "--"}},
    {"terminator", {"-x"}},     {"xterm", {"-e"}},
};

/// The option that most terminals have.
constexpr std::array<std::string_view, 2> usualOption = {"-e"};

/// Runs its argument zero and waits for Enter, because most terminals close their window when the
/// program has ended. An interactive shell would wait, too, but would have a prompt and a directory
/// that the user did not ask for. Ctrl-C ends the command only. What was typed ahead is dropped, so
/// that it does not close the window.
constexpr std::string_view waitingScript = R"(trap : INT QUIT
"$0"
status=$?
stty sane -icanon min 0 time 0 && cat >/dev/null
stty sane
if [ "$status" -eq 0 ]; then end='has ended'; else end="failed with status $status"; fi
printf '\n[The command %s. Press Enter to close this window.] ' "$end"
read -r line)";

std::vector<std::string> splitCommand(const std::string& command) {
  int count = 0;
  char** words = nullptr;
  if (!g_shell_parse_argv(command.c_str(), &count, &words, nullptr)) return {};
  std::vector<std::string> result(words, words + count);
  g_strfreev(words);
  return result;
}

/// The terminal that the command starts, with the command's arguments and the option that precedes
/// a program; absent if it is not installed.
std::optional<Process> terminalOf(const std::string& command, const Environment& environment,
                                  const FileSystem& files) {
  std::vector<std::string> words = splitCommand(command);
  if (words.empty()) return std::nullopt;
  const auto path = findProgram(words.front(), environment, files);
  if (!path) return std::nullopt;

  Process process;
  process.executable = *path;
  process.arguments.assign(words.begin() + 1, words.end());
  const std::string_view name = std::string_view(*path).substr(path->rfind('/') + 1);
  const auto* const known = std::ranges::find(terminalEmulators, name, &TerminalEmulator::program);
  const auto& option = known == std::end(terminalEmulators) ? usualOption : known->option;
  for (const std::string_view word : option) {
    if (!word.empty()) process.arguments.emplace_back(word);
  }
  return process;
}

std::optional<Process> installedTerminal(const Environment& environment, const FileSystem& files) {
  for (const TerminalEmulator& terminal : terminalEmulators) {
    if (auto process = terminalOf(std::string(terminal.program), environment, files)) {
      return process;
    }
  }
  return std::nullopt;
}

}  // namespace

Result<Process> terminalProcess(const std::string& file, const Environment& environment,
                                const FileSystem& files) {
  const std::string chosen = environment.value("TERMINAL").value_or("");
  std::optional<Process> process = terminalOf(chosen, environment, files);
  if (!process) process = installedTerminal(environment, files);
  if (!process) {
    const std::string found =
        chosen.empty() ? "No terminal is installed."
                       : "The terminal " + quotedPath(chosen) +
                             ", which the environment variable TERMINAL names, is not installed, "
                             "and there is no other.";
    return Error{found +
                 " Install a terminal, such as xterm, or set TERMINAL to the command "
                 "that starts yours."};
  }
  for (const std::string_view word : {std::string_view("/bin/sh"), std::string_view("-c"),
                                      waitingScript, std::string_view(file)}) {
    process->arguments.emplace_back(word);
  }
  process->environment = environment.variables;
  return *std::move(process);
}

}  // namespace quillmar
