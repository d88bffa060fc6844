#include "platform/linux/processes/thread_task_queue.h"

#include <chrono>
#include <csignal>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <string>
#include <utility>

#include <pthread.h>

namespace quillmar {

namespace {

constexpr std::size_t stackSize = 256 << 10;
constexpr std::size_t longestThreadName = 15;
constexpr std::chrono::milliseconds pauseBeforeRetry{100};

std::string threadNameOf(const std::string& label) {
  const std::size_t stop = label.rfind('.');
  return label.substr(stop == std::string::npos ? 0 : stop + 1).substr(0, longestThreadName);
}

}  // namespace

/// What the queue shares with its threads; the last of them destroys it.
class ThreadTaskQueue::Pool : public std::enable_shared_from_this<Pool> {
 public:
  Pool(std::string threadName, RunLater runLater, StartThread startThread)
      : threadName_(std::move(threadName)),
        runLater_(std::move(runLater)),
        startThread_(std::move(startThread)) {}

  void async(Task task) {
    {
      const std::lock_guard lock(mutex_);
      waiting_.push_back(std::move(task));
    }
    startThreads();
  }

 private:
  /// Starts a thread for every task that waits, as far as the system lets it.
  void startThreads() {
    std::unique_lock lock(mutex_);
    while (startingCount_ < waiting_.size()) {
      ++startingCount_;
      ++threadCount_;
      lock.unlock();
      const bool started = startThread();
      lock.lock();
      if (started) continue;
      --startingCount_;
      --threadCount_;
      if (threadCount_ == 0 && !std::exchange(retrying_, true)) retryLater();
      return;
    }
  }

  bool startThread() {
    auto pool = std::make_unique<std::shared_ptr<Pool>>(shared_from_this());
    if (!startThread_(runThread, pool.get())) return false;
    static_cast<void>(pool.release());  // The thread owns it.
    return true;
  }

  static void* runThread(void* argument) {
    const std::unique_ptr<std::shared_ptr<Pool>> pool(
        static_cast<std::shared_ptr<Pool>*>(argument));
    (*pool)->runTasks();
    return nullptr;
  }

  /// Runs the oldest task, and goes on while others wait for a thread.
  void runTasks() {
    if (!threadName_.empty()) pthread_setname_np(pthread_self(), threadName_.c_str());
    std::unique_lock lock(mutex_);
    --startingCount_;
    while (!waiting_.empty()) {
      Task task = std::move(waiting_.front());
      waiting_.pop_front();
      lock.unlock();
      task();
      task = nullptr;  // What it holds is destroyed before the next one starts.
      lock.lock();
    }
    --threadCount_;
  }

  void retryLater() {
    runLater_(pauseBeforeRetry, [pool = shared_from_this()] {
      {
        const std::lock_guard lock(pool->mutex_);
        pool->retrying_ = false;
      }
      pool->startThreads();
    });
  }

  const std::string threadName_;
  const RunLater runLater_;
  const StartThread startThread_;
  std::mutex mutex_;
  std::deque<Task> waiting_;
  /// Threads that have not ended, and those of them that have not looked for a task yet.
  std::size_t threadCount_ = 0;
  std::size_t startingCount_ = 0;
  bool retrying_ = false;
};

ThreadTaskQueue::ThreadTaskQueue(const ConcurrentQueueAttributes& attributes, RunLater runLater,
                                 StartThread startThread)
    : pool_(std::make_shared<Pool>(threadNameOf(attributes.label), std::move(runLater),
                                   std::move(startThread))) {}

ThreadTaskQueue::~ThreadTaskQueue() = default;

void ThreadTaskQueue::async(Task task) {
  pool_->async(std::move(task));
}

bool ThreadTaskQueue::startSystemThread(void* (*run)(void*), void* argument) {
  pthread_attr_t attributes;
  if (pthread_attr_init(&attributes) != 0) return false;
  sigset_t all;
  sigfillset(&all);
  pthread_attr_setsigmask_np(&attributes, &all);
  pthread_attr_setstacksize(&attributes, stackSize);
  pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
  pthread_t thread;
  const int error = pthread_create(&thread, &attributes, run, argument);
  pthread_attr_destroy(&attributes);
  return error == 0;
}

}  // namespace quillmar
