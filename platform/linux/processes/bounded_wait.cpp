#include "platform/linux/processes/bounded_wait.h"

#include <csignal>
#include <future>
#include <system_error>
#include <thread>
#include <utility>

namespace quillmar {

bool endsWithin(std::chrono::milliseconds patience, std::function<void()> work) {
  std::packaged_task<void()> task(std::move(work));
  const std::future<void> end = task.get_future();
  // A thread starts with the signal mask of the one that makes it.
  sigset_t all;
  sigset_t before;
  sigfillset(&all);
  pthread_sigmask(SIG_SETMASK, &all, &before);
  bool isStarted = true;
  try {
    std::thread(std::move(task)).detach();
  } catch (const std::system_error&) {
    isStarted = false;
  }
  pthread_sigmask(SIG_SETMASK, &before, nullptr);
  return isStarted && end.wait_for(patience) == std::future_status::ready;
}

}  // namespace quillmar
