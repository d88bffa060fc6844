// SIGTERM and SIGINT as orders to end the program with status 0, whatever it is doing.
//
// The order comes to the main loop, which ends things properly. A command in the foreground holds
// the main thread, so when the loop has not got to the order within the grace, the process ends
// there and then: what the clipboard holds is not saved for after the program, and output that
// would still come is not reported. The command itself lives on, as at every end. Main thread; one
// object at a time.

#pragma once

#include <functional>

#include <glib.h>

#include "platform/file_descriptor.h"

namespace quillmar {

class TerminationSignals {
 public:
  static constexpr unsigned graceSeconds = 3;

  /// Calls `terminate` in the main loop, before anything else that waits there.
  explicit TerminationSignals(std::function<void()> terminate);

  /// The signals do what they do in a new process.
  ~TerminationSignals();
  TerminationSignals(const TerminationSignals&) = delete;
  TerminationSignals& operator=(const TerminationSignals&) = delete;

  /// The main loop has ended: the grace begins anew, for whatever is left to do at the end.
  void loopHasEnded();

 private:
  std::function<void()> terminate_;
  FileDescriptor wakeup_;
  guint source_ = 0;
};

}  // namespace quillmar
