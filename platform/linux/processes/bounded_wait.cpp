#include "platform/linux/processes/bounded_wait.h"

#include <future>
#include <memory>
#include <utility>

#include "platform/detached_thread.h"

namespace quillmar {

bool endsWithin(std::chrono::milliseconds timeout, std::function<void()> work) {
  const auto task = std::make_shared<std::packaged_task<void()>>(std::move(work));
  const std::future<void> end = task->get_future();
  return startDetachedThread([task] { (*task)(); }) &&
         end.wait_for(timeout) == std::future_status::ready;
}

}  // namespace quillmar
