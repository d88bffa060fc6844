#include "platform/memory/memory_task_queues.h"

#include <utility>

namespace quillmar {

namespace {

/// A concurrent queue: hands its tasks to the common line.
class MemoryConcurrentQueue final : public TaskQueue {
 public:
  explicit MemoryConcurrentQueue(std::shared_ptr<MemoryTaskQueue> line) : line_(std::move(line)) {}

  void async(Task task) override { line_->async(std::move(task)); }

 private:
  std::shared_ptr<MemoryTaskQueue> line_;
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

/// The oldest task; releases the lock, so that the task can hand over others.
TaskQueue::Task MemoryTaskQueue::take(std::unique_lock<std::mutex>& lock) {
  Task task = std::move(tasks_.front());
  tasks_.pop_front();
  lock.unlock();
  return task;
}

std::unique_ptr<TaskQueue> MemoryTaskQueues::makeConcurrentQueue(
    ConcurrentQueueAttributes attributes) {
  attributes_.push_back(std::move(attributes));
  return std::make_unique<MemoryConcurrentQueue>(concurrent_);
}

void MemoryTaskQueues::runAll() {
  while (main_.runPending() + concurrent_->runPending() > 0) {
  }
}

}  // namespace quillmar
