// The interface between the program and its window module, a shared library that is built with the
// program and loaded when the first window is shown. Main thread.

#pragma once

#include <functional>
#include <string>

#include "platform/environment.h"
#include "platform/log.h"
#include "platform/result.h"

namespace quillmar {

class TaskQueue;
class WindowSystem;

/// What the program provides to the module. All of it lives until the process ends.
struct WindowModuleHost {
  /// Runs tasks in the current main loop, first the program's, later the module's.
  TaskQueue& mainQueue;
  /// The environment that the program was started with.
  const Environment& environment;
  /// Reverse-DNS name of the program. The desktop entry and the icon have the same name.
  std::string applicationId;
  /// Display name of the program.
  std::string applicationName;
  std::string applicationVersion;
  /// A folder with icon themes, in addition to the system's. The images of Images are icons in
  /// these themes.
  std::string iconThemePath;
  /// For problems that do not need a notification.
  LogLine log;
  /// Called when the X connection is lost. Starts the program again in this process. Returns only
  /// if that fails. The process then ends with status 1. May be empty.
  std::function<void()> restart;
};

/// The started module. Never destroyed.
class WindowModule {
 public:
  virtual WindowSystem& windows() = 0;

  /// Runs the module's main loop, which also dispatches GLib's default main context. The program
  /// switches from its own loop to this one once the module has started. Returns after quit(). If
  /// the X connection is lost, `restart` is called; if the Wayland connection is lost, the process
  /// ends.
  virtual void run() = 0;

  /// Makes run() return after the current iteration. Called only inside run().
  virtual void quit() = 0;

 protected:
  ~WindowModule() = default;
};

/// The entry point of the module. Starts it; called from the main loop. Returns null and sets
/// `error` on failure, for example without a display; a later call may succeed. Not called again
/// after a success.
using StartWindowModule = WindowModule*(const WindowModuleHost& host, Error& error);

/// The exported name of the entry point, with C linkage.
inline constexpr const char* windowModuleEntryPoint = "quillmar_start_window_module";

}  // namespace quillmar

// Named as C names are. NOLINTNEXTLINE(readability-identifier-naming)
extern "C" quillmar::StartWindowModule quillmar_start_window_module;
