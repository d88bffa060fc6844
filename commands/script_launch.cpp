#include "commands/script_launch.h"

#include <string_view>

#include "platform/text.h"

namespace quillmar {

namespace {

struct Interpreter {
  std::string_view extension;
  std::string_view executable;
  /// The interpreter that env finds in PATH; empty if the executable is the interpreter.
  std::string_view program;
};

constexpr Interpreter interpreters[] = {
    {"py", "/usr/bin/env", "python3"},  //
    {"sh", "/bin/bash", ""},
    {"bash", "/bin/bash", ""},
    {"zsh", "/bin/zsh", ""},
    {"rb", "/usr/bin/env", "ruby"},
    {"js", "/usr/bin/env", "node"},
    {"scpt", "/usr/bin/osascript", ""},
    {"applescript", "/usr/bin/osascript", ""},
};

/// The text after the last dot of the last path component; empty if there is none, and for names
/// like ".profile".
std::string pathExtension(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  const std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
  const std::size_t dot = name.rfind('.');
  if (dot == std::string::npos || dot == 0) return {};
  return name.substr(dot + 1);
}

}  // namespace

ScriptLaunch scriptLaunch(const std::string& path) {
  const std::string extension = text::lowercased(pathExtension(path));
  for (const Interpreter& interpreter : interpreters) {
    if (extension != interpreter.extension) continue;
    ScriptLaunch launch{std::string(interpreter.executable), {}};
    if (!interpreter.program.empty()) launch.arguments.emplace_back(interpreter.program);
    launch.arguments.push_back(path);
    return launch;
  }
  return {path, {}};
}

std::string expandingTilde(const std::string& path, const std::string& homeDirectory) {
  if (path != "~" && !path.starts_with("~/")) return path;
  std::string expanded = homeDirectory;
  while (expanded.ends_with('/')) expanded.pop_back();
  expanded += path.substr(1);
  return expanded.empty() ? "/" : expanded;
}

std::string deletingLastPathComponent(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  if (slash == std::string::npos) return {};
  return slash == 0 ? "/" : path.substr(0, slash);
}

}  // namespace quillmar
