// The program's main loop. It begins as one of GLib's; a module that brings a loop of its own,
// which must serve the same default main context, takes over in the middle of the run. Main thread.

#pragma once

#include <functional>
#include <optional>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {

class MainLoop {
 public:
  /// A loop that takes over.
  struct Successor {
    /// Serves the default main context until `quit`, or until it ends for a reason of its own,
    /// which is the end of the program too.
    std::function<void()> run;
    /// Called inside `run` only: has it return when the current turn is over.
    std::function<void()> quit;
  };

  /// Runs until quit(), which may have been called already. Called once.
  void run();

  /// Ends the run once the current turn is over, whichever loop it is in.
  void quit();

  /// Has the run go on in the successor once the current turn is over, or begin in it. Called once.
  void handOver(Successor successor);

 private:
  GMainLoopPtr first_{g_main_loop_new(nullptr, false)};
  std::optional<Successor> successor_;
  bool isInSuccessor_ = false;
  bool isOver_ = false;
};

}  // namespace quillmar
