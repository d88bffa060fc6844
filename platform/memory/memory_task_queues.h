// Task queues that run their tasks when they are told to: the command line's main loop, and queues
// for tests in which nothing happens before the test says so.

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

/// A queue that its owner drains. Tasks come from any thread; they run, in the order in which they
/// were handed over, on whichever thread calls one of the run functions. A task may call these too.
class MemoryTaskQueue final : public TaskQueue {
 public:
  void async(Task task) override;

  std::size_t pendingCount() const;

  /// Runs the tasks that wait and those handed over meanwhile until none is left; returns how many
  /// have run.
  std::size_t runPending();

  /// Runs tasks, sleeping while there are none, until `done` says true. `done` is asked at the
  /// start and after each task, on the calling thread.
  void runUntil(const std::function<bool()>& done);

 private:
  Task take(std::unique_lock<std::mutex>& lock);

  mutable std::mutex mutex_;
  std::condition_variable handedOver_;
  std::deque<Task> tasks_;
};

/// A main queue and concurrent queues, all drained by the owner. The tasks of all concurrent queues
/// wait in one line, so that their order is fixed; they stay there when their queue is destroyed.
class MemoryTaskQueues final : public TaskQueues {
 public:
  MemoryTaskQueue& mainQueue() override { return main_; }
  std::unique_ptr<ConcurrentQueue> makeConcurrentQueue(
      ConcurrentQueueAttributes attributes) override;

  /// Makes all concurrent queues refuse further tasks with this error, or accept them again.
  void setConcurrentError(std::optional<Error> error) { *concurrentError_ = std::move(error); }

  /// The line of all concurrent queues' tasks.
  MemoryTaskQueue& concurrentTasks() { return *concurrent_; }

  /// Runs the main queue's tasks, as MemoryTaskQueue::runPending().
  std::size_t runPending() { return main_.runPending(); }

  /// Runs the main queue's tasks, as MemoryTaskQueue::runUntil().
  void runUntil(const std::function<bool()>& done) { main_.runUntil(done); }

  /// Runs the tasks of all queues, the main queue's first each time, until none is left.
  void runAll();

  /// The attributes of every concurrent queue made so far, in order.
  const std::vector<ConcurrentQueueAttributes>& concurrentQueues() const { return attributes_; }

 private:
  MemoryTaskQueue main_;
  std::shared_ptr<MemoryTaskQueue> concurrent_ = std::make_shared<MemoryTaskQueue>();
  std::shared_ptr<std::optional<Error>> concurrentError_ = std::make_shared<std::optional<Error>>();
  std::vector<ConcurrentQueueAttributes> attributes_;
};

}  // namespace quillmar
