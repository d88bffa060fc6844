// The main queue, on GLib's default main context. Tasks run in order in any loop that the main
// thread runs on that context, between events of the same priority.

#pragma once

#include <chrono>
#include <functional>

#include "platform/task_queue.h"

namespace quillmar {

/// Has no state: tasks belong to the main context and run even if the queue is destroyed first.
class MainLoopTaskQueue final : public TaskQueue {
 public:
  void async(Task task) override;

  /// Cancels a task. Has no effect on a task that is running or has run. Main thread.
  using Cancel = std::function<void()>;

  /// Returns at once. The task runs in the main loop after the delay. Any thread.
  static Cancel asyncAfter(std::chrono::milliseconds delay, Task task);
};

}  // namespace quillmar
