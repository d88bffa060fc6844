// Manually driven task queues, for the main loop of the command line and for tests.

#pragma once

#include <condition_variable>
#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>
#include <vector>

#include "platform/task_queue.h"

namespace quillmar {

/// A queue that its owner drains. Tasks are appended from any thread and run in order on the thread
/// that calls a run function. A task may call the run functions too.
class MemoryTaskQueue final : public TaskQueue {
 public:
  void async(Task task) override;

  std::size_t pendingCount() const;

  /// Runs tasks until the queue is empty, including those appended meanwhile. Returns the number of
  /// tasks run.
  std::size_t runPending();

  /// Runs tasks, and waits while there are none, until `done` returns true. `done` is called at the
  /// start and after each task, on the calling thread.
  void runUntil(const std::function<bool()>& done);

 private:
  Task take(std::unique_lock<std::mutex>& lock);

  mutable std::mutex mutex_;
  std::condition_variable handedOver_;
  std::deque<Task> tasks_;
};

/// A main queue and concurrent queues, all drained by the owner. All concurrent queues share one
/// queue of tasks, so that the order is deterministic. Tasks remain in it when their concurrent
/// queue is destroyed.
class MemoryTaskQueues final : public TaskQueues {
 public:
  MemoryTaskQueue& mainQueue() override { return main_; }
  std::unique_ptr<ConcurrentQueue> makeConcurrentQueue(
      ConcurrentQueueAttributes attributes) override;

  /// Makes all concurrent queues reject further tasks with this error, or accept them again.
  void setConcurrentError(std::optional<Error> error) { *concurrentError_ = std::move(error); }

  /// The shared queue of all concurrent tasks.
  MemoryTaskQueue& concurrentTasks() { return *concurrent_; }

  /// Runs the main queue's tasks, as MemoryTaskQueue::runPending().
  std::size_t runPending() { return main_.runPending(); }

  /// Runs the main queue's tasks, as MemoryTaskQueue::runUntil().
  void runUntil(const std::function<bool()>& done) { main_.runUntil(done); }

  /// Runs the tasks of all queues until they are empty, giving priority to the main queue.
  void runAll();

  /// The attributes of all concurrent queues created so far, in order.
  const std::vector<ConcurrentQueueAttributes>& concurrentQueues() const { return attributes_; }

 private:
  MemoryTaskQueue main_;
  std::shared_ptr<MemoryTaskQueue> concurrent_ = std::make_shared<MemoryTaskQueue>();
  std::shared_ptr<std::optional<Error>> concurrentError_ = std::make_shared<std::optional<Error>>();
  std::vector<ConcurrentQueueAttributes> attributes_;
};

}  // namespace quillmar
