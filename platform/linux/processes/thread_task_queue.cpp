#include "platform/linux/processes/thread_task_queue.h"

#include <cstddef>
#include <string>
#include <utility>

namespace quillmar {

namespace {

constexpr std::size_t longestThreadName = 15;

std::string threadNameOf(const std::string& label) {
  const std::size_t stop = label.rfind('.');
  return label.substr(stop == std::string::npos ? 0 : stop + 1).substr(0, longestThreadName);
}

}  // namespace

ThreadTaskQueue::ThreadTaskQueue(const ConcurrentQueueAttributes& attributes)
    : ThreadTaskQueue([name = threadNameOf(attributes.label)](TaskQueue::Task task) {
        return startDetachedThread(std::move(task), name);
      }) {}

Result<void> ThreadTaskQueue::async(TaskQueue::Task task) {
  if (startThread_(std::move(task))) return {};
  return Error{"The system cannot start another thread."};
}

}  // namespace quillmar
