// Desktop entries in autostart folders: what desktops start at login. Any thread.

#pragma once

#include <optional>
#include <string>

#include "platform/environment.h"
#include "platform/file_system.h"

namespace quillmar {

struct AutostartEntry {
  /// Why this desktop does not start the program, as the end of a sentence, such as "its key Hidden
  /// is true"; empty if nothing switches the entry off.
  std::string switchedOffBy;
  /// The first word of Exec; empty if the file has no valid one.
  std::string program;
  /// False if the program of Exec or of TryExec is not installed.
  bool isProgramInstalled = false;
  /// True if makeAutostartEntry() or makeHiddenAutostartEntry() wrote the file.
  bool isOurs = false;
  /// True if makeHiddenAutostartEntry() wrote the file and nobody has switched it on since.
  bool isUnregistered = false;
};

/// Reads the file's text. Text that is not a desktop entry gives an entry without a program.
AutostartEntry parseAutostartEntry(const std::string& text, const Environment& environment,
                                   const FileSystem& files);

/// The text of a file that starts the program at the absolute path.
std::string makeAutostartEntry(const std::string& program);

/// The text of a file that hides the system's file of the same name. If the user switches it on in
/// the settings of the desktop, it starts the program.
std::string makeHiddenAutostartEntry(const std::string& program);

}  // namespace quillmar
