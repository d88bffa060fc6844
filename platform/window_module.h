// What the program and the module that shows its windows know of each other. The module is a shared
// library, loaded with the first window; it is built together with the program. Main thread.

#pragma once

#include <string>

#include "platform/environment.h"
#include "platform/log.h"
#include "platform/result.h"

namespace quillmar {

class TaskQueue;
class WindowSystem;

/// What the module gets from the program. All of it lives to the end of the process.
struct WindowModuleHost {
  /// Runs tasks in the program's main loop, and goes on doing so in the module's.
  TaskQueue& mainQueue;
  /// The environment that the program was started with.
  const Environment& environment;
  /// The program's name in reverse-DNS form, which is also that of its desktop entry and its icon.
  std::string applicationId;
  /// Its name as people know it.
  std::string applicationName;
  std::string applicationVersion;
  /// A folder with icon themes besides the system's: what Images gives are names of icons in it or
  /// in those.
  std::string iconThemePath;
  /// For what is not worth a notification.
  LogLine log;
};

/// The module once it is at work. It is never destroyed.
class WindowModule {
 public:
  virtual WindowSystem& windows() = 0;

  /// The module's main loop, which serves GLib's default main context. The program leaves its own
  /// for it as soon as the module is at work. Returns after quit(). When the display goes
  /// away the process ends.
  virtual void run() = 0;

  /// Has run() return once the current turn is over. Called inside run() only.
  virtual void quit() = 0;

 protected:
  ~WindowModule() = default;
};

/// The module's one entry point: sets it to work, in a turn of the main loop. Null when that is not
/// possible, for want of a display for example; `error` then says why, and the entry point may be
/// called again. Not called again after it succeeded.
using StartWindowModule = WindowModule*(const WindowModuleHost& host, Error& error);

/// The name under which it is exported, with C linkage.
inline constexpr const char* windowModuleEntryPoint = "quillmar_start_window_module";

}  // namespace quillmar

// Named as C names are. NOLINTNEXTLINE(readability-identifier-naming)
extern "C" quillmar::StartWindowModule quillmar_start_window_module;
