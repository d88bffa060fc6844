// SIGTERM and SIGINT end the program with status 0, whatever it is doing.
//
// The main loop receives the request and shuts down in order. A foreground command blocks the main
// thread; if the main loop has not received the request within the grace period, the process exits
// at once: the clipboard's contents are lost, and pending output is not reported. The command
// itself keeps running, as at every exit. Main thread; one object at a time.

#pragma once

#include <functional>

#include <glib.h>

#include "platform/file_descriptor.h"

namespace quillmar {

class TerminationSignals {
 public:
  static constexpr unsigned graceSeconds = 3;

  /// Calls `terminate` in the main loop, before all other pending events.
  explicit TerminationSignals(std::function<void()> terminate);

  /// Restores the default actions of the signals.
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

  /// True once a signal has arrived or the main loop has ended. Any thread.
  static bool isShuttingDown();

  /// Call when the main loop has ended: restarts the grace period for the rest of the shutdown.
  void loopHasEnded();

 private:
  std::function<void()> terminate_;
  FileDescriptor wakeup_;
  guint source_ = 0;
};

}  // namespace quillmar
