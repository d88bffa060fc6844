// Opens URLs, files and terminals with other programs of the desktop.

#pragma once

#include <functional>
#include <optional>
#include <string>

#include <gio/gio.h>

#include "platform/environment.h"
#include "platform/file_system.h"
#include "platform/linux/bus/bus_calls.h"
#include "platform/processes.h"
#include "platform/workspace.h"

namespace quillmar {

/// Completions are called from the main loop, and never after the loop has ended.
class DesktopWorkspace final : public Workspace {
 public:
  /// `bus` is the session bus; null if there is none. The other arguments must outlive this object.
  DesktopWorkspace(const Environment& environment, const FileSystem& files, Processes& processes,
                   GDBusConnection* bus);

  Result<void> openInTerminal(const std::string& path) override;

  /// Asks the file manager and, if there is none on the bus, the desktop portal. If both fail,
  /// opens the folder of the file with the default program for folders.
  void revealFile(const std::string& path,
                  std::function<void(const Result<void>& revealed)> completion) override;

  /// Uses the user's default applications (mimeapps.list) and the installed desktop files.
  void openURL(const std::string& url,
               std::function<void(const Result<void>& opened)> completion) override;

 private:
  using Completion = std::function<void(const Result<void>& done)>;

  void openFolderInPortal(const std::string& path, Completion completion);
  void openFolder(const std::string& path, Completion completion);

  const Environment& environment_;
  const FileSystem& files_;
  Processes& processes_;
  std::optional<BusCalls> calls_;
};

}  // namespace quillmar
