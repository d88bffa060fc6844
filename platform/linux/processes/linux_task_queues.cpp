#include "platform/linux/processes/linux_task_queues.h"

#include "platform/linux/processes/main_loop_task_queue.h"
#include "platform/linux/processes/thread_task_queue.h"

namespace quillmar {

std::unique_ptr<TaskQueue> LinuxTaskQueues::makeConcurrentQueue(
    ConcurrentQueueAttributes attributes) {
  return std::make_unique<ThreadTaskQueue>(attributes, MainLoopTaskQueue::asyncAfter);
}

}  // namespace quillmar
