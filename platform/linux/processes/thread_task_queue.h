// A concurrent queue that starts each task on a thread of its own, which ends with the task.

#pragma once

#include <utility>

#include "platform/detached_thread.h"
#include "platform/task_queue.h"

namespace quillmar {

class ThreadTaskQueue final : public ConcurrentQueue {
 public:
  /// The part of the label after its last full stop names the threads.
  explicit ThreadTaskQueue(const ConcurrentQueueAttributes& attributes);

  /// Starts its threads with `startThread`.
  explicit ThreadTaskQueue(StartThread startThread) : startThread_(std::move(startThread)) {}

  Result<void> async(TaskQueue::Task task) override;

 private:
  StartThread startThread_;
};

}  // namespace quillmar
