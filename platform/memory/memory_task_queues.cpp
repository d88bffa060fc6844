#include "platform/memory/memory_task_queues.h"

#include <utility>

namespace quillmar {

namespace {

/// Appends its tasks to the queue shared by all concurrent queues.
class MemoryConcurrentQueue final : public ConcurrentQueue {
 public:
  MemoryConcurrentQueue(std::shared_ptr<MemoryTaskQueue> tasks,
                        std::shared_ptr<const std::optional<Error>> error)
      : tasks_(std::move(tasks)), error_(std::move(error)) {}

  Result<void> async(TaskQueue::Task task) override {
    if (*error_) return **error_;
    tasks_->async(std::move(task));
    return {};
  }

 private:
  std::shared_ptr<MemoryTaskQueue> tasks_;
  std::shared_ptr<const std::optional<Error>> error_;
};

}  // namespace

void MemoryTaskQueue::async(Task task) {
  // Under the lock: once the task has been taken, the owner may destroy the queue.
  const std::lock_guard lock(mutex_);
  tasks_.push_back(std::move(task));
  handedOver_.notify_one();
}

std::size_t MemoryTaskQueue::pendingCount() const {
  const std::lock_guard lock(mutex_);
  return tasks_.size();
}

std::size_t MemoryTaskQueue::runPending() {
  std::size_t count = 0;
  for (;; ++count) {
    std::unique_lock lock(mutex_);
    if (tasks_.empty()) return count;
    take(lock)();
  }
}

void MemoryTaskQueue::runUntil(const std::function<bool()>& done) {
  while (!done()) {
    std::unique_lock lock(mutex_);
    handedOver_.wait(lock, [this] { return !tasks_.empty(); });
    take(lock)();
  }
}

/// Removes and returns the oldest task. Releases the lock, so that the task can append others.
TaskQueue::Task MemoryTaskQueue::take(std::unique_lock<std::mutex>& lock) {
  Task task = std::move(tasks_.front());
  tasks_.pop_front();
  lock.unlock();
  return task;
}

std::unique_ptr<ConcurrentQueue> MemoryTaskQueues::makeConcurrentQueue(
    ConcurrentQueueAttributes attributes) {
  attributes_.push_back(std::move(attributes));
  return std::make_unique<MemoryConcurrentQueue>(concurrent_, concurrentError_);
}

void MemoryTaskQueues::runAll() {
  while (main_.runPending() + concurrent_->runPending() > 0) {
  }
}

}  // namespace quillmar
