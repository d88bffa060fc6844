// The executable file that a terminal window runs for an item: its text, its name and its place.

#pragma once

#include <string>
#include <string_view>

#include "config/quillmar_config.h"
#include "platform/environment.h"
#include "platform/file_system.h"
#include "platform/result.h"

namespace quillmar {

/// A command for a terminal, with "{{input}}" already replaced.
struct TerminalScript {
  const MenuCommand& command;
  /// The item's title.
  std::string_view title;
  /// Path of the shell that interprets the file.
  std::string_view shell;
  std::string_view homeDirectory;
};

/// The name of the file: the letters a to z and the digits of the title in lower case, with a
/// hyphen for everything between them. Titles with the same letters and digits share a name.
std::string terminalScriptName(std::string_view title);

/// The text of the file. It does not end with a line feed.
std::string terminalScriptText(const TerminalScript& script);

/// The folder for temporary files: the first of TMPDIR and XDG_RUNTIME_DIR that is an absolute
/// path, otherwise /tmp. Without a slash at the end.
std::string temporaryDirectory(const Environment& environment);

/// Writes the file into the subfolder "Quillmar" of the folder for temporary files, replacing an
/// earlier one, and returns its path. Fails if other users could read or replace files in the
/// subfolder, because they could then change what runs.
Result<std::string> writeTerminalScript(const TerminalScript& script,
                                        const Environment& environment, FileSystem& files);

}  // namespace quillmar
