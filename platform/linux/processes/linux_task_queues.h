// The queues of the program: its main queue, and concurrent queues on system threads.

#pragma once

#include <memory>

#include "platform/task_queue.h"

namespace quillmar {

class LinuxTaskQueues final : public TaskQueues {
 public:
  /// `mainQueue` is the queue that the program's main loop runs. Tasks of blocked threads may use
  /// it at any time, so it must live until the end of the process.
  explicit LinuxTaskQueues(TaskQueue& mainQueue) : mainQueue_(mainQueue) {}

  TaskQueue& mainQueue() override { return mainQueue_; }
  std::unique_ptr<ConcurrentQueue> makeConcurrentQueue(
      ConcurrentQueueAttributes attributes) override;

 private:
  TaskQueue& mainQueue_;
};

}  // namespace quillmar
