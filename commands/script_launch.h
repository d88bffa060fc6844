// How a script file is started: with the interpreter for its extension, or directly.

#pragma once

#include <string>
#include <vector>

namespace quillmar {

struct ScriptLaunch {
  std::string executable;
  std::vector<std::string> arguments;

  bool operator==(const ScriptLaunch&) const = default;
};

/// The launch for the script at `path`, selected by its extension, ignoring case.
ScriptLaunch scriptLaunch(const std::string& path);

/// Replaces a leading "~" (alone or before a slash) with the home directory. Slashes at the end of
/// the home directory are removed: "/" and "~/bin" give "/bin".
std::string expandingTilde(const std::string& path, const std::string& homeDirectory);

/// The directory part of a path; empty if it has none.
std::string deletingLastPathComponent(const std::string& path);

}  // namespace quillmar
