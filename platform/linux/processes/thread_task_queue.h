// A concurrent queue on the system's threads. Each task starts at once on a thread of its own,
// which ends with it; when the system has no thread to spare, tasks wait for one that ends.

#pragma once

#include <chrono>
#include <functional>
#include <memory>

#include "platform/task_queue.h"

namespace quillmar {

class ThreadTaskQueue final : public TaskQueue {
 public:
  /// Starts a detached thread that calls the function once; false when the system refuses.
  using StartThread = std::function<bool(void* (*run)(void*), void* argument)>;

  /// Returns at once and has the task run once, on any thread, when the delay is over. Called from
  /// any thread.
  using RunLater = std::function<void(std::chrono::milliseconds delay, Task task)>;

  /// The part of the label behind its last full stop names the threads. Should the system refuse a
  /// thread while none of this queue's is left to take the task, the queue tries again later.
  ThreadTaskQueue(const ConcurrentQueueAttributes& attributes, RunLater runLater,
                  StartThread startThread = startSystemThread);

  /// The tasks handed over go on, waiting ones too.
  ~ThreadTaskQueue() override;

  void async(Task task) override;

  /// Starts a thread with a small stack in which every signal is blocked: signals are the main
  /// thread's.
  static bool startSystemThread(void* (*run)(void*), void* argument);

 private:
  class Pool;
  std::shared_ptr<Pool> pool_;
};

}  // namespace quillmar
