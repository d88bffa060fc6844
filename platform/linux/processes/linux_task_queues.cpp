#include "platform/linux/processes/linux_task_queues.h"

#include "platform/linux/processes/thread_task_queue.h"

namespace quillmar {

std::unique_ptr<ConcurrentQueue> LinuxTaskQueues::makeConcurrentQueue(
    ConcurrentQueueAttributes attributes) {
  return std::make_unique<ThreadTaskQueue>(attributes);
}

}  // namespace quillmar
