// How a script file is started: by the interpreter that its extension names, else by itself.

#pragma once

#include <string>
#include <vector>

namespace quillmar {

struct ScriptLaunch {
  std::string executable;
  std::vector<std::string> arguments;

  bool operator==(const ScriptLaunch&) const = default;
};

/// The launch for the script at `path`, chosen by the lower-cased extension of its last component.
ScriptLaunch scriptLaunch(const std::string& path);

/// The path with a leading "~" (alone or before a slash) replaced by the home directory, without
/// slashes at the end of that: "/" and "~/bin" give "/bin".
std::string expandingTilde(const std::string& path, const std::string& homeDirectory);

/// The directory part of a path; empty when it has none.
std::string deletingLastPathComponent(const std::string& path);

}  // namespace quillmar
