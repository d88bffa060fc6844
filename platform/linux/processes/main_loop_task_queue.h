// The main queue on GLib's default main context: tasks run, in order, in whichever loop the main
// thread runs on it, between the events of the same priority.

#pragma once

#include <chrono>
#include <functional>

#include "platform/task_queue.h"

namespace quillmar {

/// Holds nothing: tasks belong to the context and run although the queue is gone.
class MainLoopTaskQueue final : public TaskQueue {
 public:
  void async(Task task) override;

  /// Drops a task, which has no effect when it runs or has run already. Main thread.
  using Cancel = std::function<void()>;

  /// Returns at once; the task runs in the main loop when the delay is over. Any thread.
  static Cancel asyncAfter(std::chrono::milliseconds delay, Task task);
};

}  // namespace quillmar
