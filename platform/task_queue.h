// Work queues. The main queue runs tasks one after another on the main thread; concurrent queues
// run each task on its own thread.

#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/result.h"

namespace quillmar {

class TaskQueue {
 public:
  using Task = std::function<void()>;

  virtual ~TaskQueue() = default;

  /// Appends a task and returns at once; the task never runs inside this call. Tasks run in the
  /// order in which they were appended. Any thread.
  virtual void async(Task task) = 0;
};

class ConcurrentQueue {
 public:
  virtual ~ConcurrentQueue() = default;

  /// Starts a task and returns at once; the task never runs inside this call. Tasks do not wait for
  /// each other. Fails if the system cannot create a thread; the task then never runs. Any thread.
  virtual Result<void> async(TaskQueue::Task task) = 0;
};

enum class QualityOfService { userInitiated };

struct ConcurrentQueueAttributes {
  std::string label;
  QualityOfService qualityOfService = QualityOfService::userInitiated;
};

/// Factory of the queues. Main thread.
class TaskQueues {
 public:
  virtual ~TaskQueues() = default;

  virtual TaskQueue& mainQueue() = 0;

  /// Creates a concurrent queue. Neither its destructor nor the end of the program waits for its
  /// tasks.
  virtual std::unique_ptr<ConcurrentQueue> makeConcurrentQueue(
      ConcurrentQueueAttributes attributes) = 0;
};

}  // namespace quillmar
