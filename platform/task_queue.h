// Queues of work: the main queue, whose tasks run one after another on the main thread, and
// concurrent queues, whose tasks run side by side on threads of their own.

#pragma once

#include <functional>
#include <memory>
#include <string>

namespace quillmar {

class TaskQueue {
 public:
  using Task = std::function<void()>;

  virtual ~TaskQueue() = default;

  /// Hands over a task and returns at once; the task never runs inside this call. Any thread.
  /// The main queue keeps the order in which tasks were handed over. A concurrent queue starts
  /// every task at once, however many of them hang.
  virtual void async(Task task) = 0;
};

enum class QualityOfService { userInitiated };

struct ConcurrentQueueAttributes {
  std::string label;
  QualityOfService qualityOfService = QualityOfService::userInitiated;
};

/// Gives out the queues. Main thread.
class TaskQueues {
 public:
  virtual ~TaskQueues() = default;

  virtual TaskQueue& mainQueue() = 0;

  /// A new concurrent queue, owned by the caller. Destroying it does not wait for its tasks, and
  /// neither does the end of the program.
  virtual std::unique_ptr<TaskQueue> makeConcurrentQueue(ConcurrentQueueAttributes attributes) = 0;
};

}  // namespace quillmar
