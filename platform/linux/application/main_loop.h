// The program's main loop. It starts as a GLib loop. A module with its own loop, which must serve
// the same default main context, can take over during the run. Main thread.

#pragma once

#include <functional>
#include <optional>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

class MainLoop {
 public:
  /// A loop that takes over.
  struct Successor {
    /// Serves the default main context until `quit`. If it returns for another reason, the program
    /// ends too.
    std::function<void()> run;
    /// Called inside `run` only. Makes it return after the current iteration.
    std::function<void()> quit;
  };

  /// Runs until quit(), which may have been called already. Called once.
  void run();

  /// Ends the run after the current iteration of whichever loop is running.
  void quit();

  /// Continues the run in the successor after the current iteration, or starts the run there.
  /// Called once.
  void handOver(Successor successor);

 private:
  GMainLoopPtr first_{g_main_loop_new(nullptr, false)};
  std::optional<Successor> successor_;
  bool isInSuccessor_ = false;
  bool isOver_ = false;
};

}  // namespace quillmar
