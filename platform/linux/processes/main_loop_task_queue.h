// The main queue on GLib's default main context: tasks run, in order, in whichever loop the main
// thread runs on it, between the events of the same priority.

#pragma once

#include "platform/task_queue.h"

namespace quillmar {

/// Holds nothing: tasks belong to the context and run although the queue is gone.
class MainLoopTaskQueue final : public TaskQueue {
 public:
  void async(Task task) override;
};

}  // namespace quillmar
