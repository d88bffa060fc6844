#include "commands/terminal_script.h"

#include <algorithm>
#include <cstdint>
#include <optional>

#include "commands/command_environment.h"
#include "commands/script_launch.h"
#include "platform/text.h"

namespace quillmar {

namespace {

constexpr std::uint32_t scriptPermissions = 0755;

bool isKeptInNames(char character) {
  return (character >= 'a' && character <= 'z') || (character >= '0' && character <= '9');
}

/// Appends a blank and the word, quoted for a shell.
void appendQuoted(std::string& line, std::string_view word) {
  line += " '";
  for (const char character : word) {
    if (character == '\'') {
      line += R"('\'')";
    } else {
      line += character;
    }
  }
  line += "'";
}

std::string commandLine(const TerminalScript& script) {
  const std::string& value = script.command.value;
  switch (script.command.type) {
    case CommandType::shellCommand:
      return value;
    case CommandType::scriptFile: {
      const ScriptLaunch launch =
          scriptLaunch(expandingTilde(value, std::string(script.homeDirectory)));
      std::string line = "exec";
      appendQuoted(line, launch.executable);
      for (const std::string& argument : launch.arguments) appendQuoted(line, argument);
      return line;
    }
    case CommandType::appleScript: {
      std::string line = "osascript -e";
      appendQuoted(line, value);
      return line;
    }
  }
  return {};
}

}  // namespace

std::string terminalScriptName(std::string_view title) {
  std::string name;
  for (const char character : text::lowercased(title)) {
    if (isKeptInNames(character)) {
      name += character;
    } else if (!name.empty() && name.back() != '-') {
      name += '-';
    }
  }
  if (name.ends_with('-')) name.pop_back();
  return (name.empty() ? "command" : name) + ".command";
}

std::string terminalScriptText(const TerminalScript& script) {
  // A line feed in the title would end the comment, and the rest of the title would run.
  std::string title(script.title);
  std::ranges::replace(title, '\n', ' ');

  std::string text = "#!";
  text.append(script.shell).append(" -l\n# Quillmar: ").append(title).append("\nexport PATH=\"");
  for (const std::string_view directory : extraPathDirectories) text.append(directory).append(":");
  return text.append("$PATH\"\ncd ~\n").append(commandLine(script));
}

std::string temporaryDirectory(const Environment& environment) {
  for (const char* variable : {"TMPDIR", "XDG_RUNTIME_DIR"}) {
    std::string path = environment.value(variable).value_or("");
    if (!path.starts_with('/')) continue;
    while (path.ends_with('/')) path.pop_back();
    return path;
  }
  return "/tmp";
}

Result<std::string> writeTerminalScript(const TerminalScript& script,
                                        const Environment& environment, FileSystem& files) {
  const std::string folder = temporaryDirectory(environment) + "/Quillmar";
  if (Result<void> created = files.createPrivateDirectory(folder); !created) {
    return created.error();
  }
  std::string path = folder + "/" + terminalScriptName(script.title);
  if (Result<void> written = files.replace(path, terminalScriptText(script), scriptPermissions);
      !written) {
    return written.error();
  }
  return path;
}

}  // namespace quillmar
