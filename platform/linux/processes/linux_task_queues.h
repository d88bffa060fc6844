// The queues of the program: its main queue and concurrent ones on the system's threads.

#pragma once

#include <memory>

#include "platform/task_queue.h"

namespace quillmar {

class LinuxTaskQueues final : public TaskQueues {
 public:
  /// The main queue, which is whatever the program's main loop drains, must outlive the tasks of
  /// all queues, those of hanging threads too: let it live to the end of the process. A task for
  /// which the system has no thread at all waits for a timer of GLib's default main context.
  explicit LinuxTaskQueues(TaskQueue& mainQueue) : mainQueue_(mainQueue) {}

  TaskQueue& mainQueue() override { return mainQueue_; }
  std::unique_ptr<TaskQueue> makeConcurrentQueue(ConcurrentQueueAttributes attributes) override;

 private:
  TaskQueue& mainQueue_;
};

}  // namespace quillmar
