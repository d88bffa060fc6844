#include <chrono>
#include <csignal>
#include <functional>
#include <future>
#include <latch>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

#include <gtest/gtest.h>
#include <pthread.h>

#include "platform/linux/processes/linux_task_queues.h"
#include "platform/linux/processes/main_loop_task_queue.h"
#include "platform/linux/processes/posix_processes.h"
#include "platform/linux/processes/thread_task_queue.h"
#include "platform/memory/memory_task_queues.h"
#include "tests/conformance/task_queues_conformance.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/test_program.h"

namespace quillmar {
namespace {

/// The queues of the resident program.
class MainLoopQueuesFixture {
 public:
  TaskQueues& queues() { return queues_; }
  void runUntil(const std::function<bool()>& done) { runMainLoopUntil(done); }

 private:
  MainLoopTaskQueue main_;
  LinuxTaskQueues queues_{main_};
};

/// The queues of the command line.
class CommandLineQueuesFixture {
 public:
  TaskQueues& queues() { return queues_; }
  void runUntil(const std::function<bool()>& done) { main_.runUntil(done); }

 private:
  MemoryTaskQueue main_;
  LinuxTaskQueues queues_{main_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(MainLoop, TaskQueuesConformance, MainLoopQueuesFixture);
INSTANTIATE_TYPED_TEST_SUITE_P(CommandLine, TaskQueuesConformance, CommandLineQueuesFixture);

/// Starts threads only while it is allowed to.
class LimitedThreads {
 public:
  ThreadTaskQueue::StartThread starter() {
    return [this](void* (*run)(void*), void* argument) {
      if (allowed == 0) {
        ++refusals;
        return false;
      }
      --allowed;
      threads.emplace_back(run, argument);
      return true;
    };
  }

  int allowed = 0;
  int refusals = 0;
  std::vector<std::jthread> threads;
};

void unexpectedRetry(std::chrono::milliseconds, const TaskQueue::Task&) {
  ADD_FAILURE() << "The system has refused a thread.";
}

TEST(ThreadTaskQueue, TheTwoHundredthTaskStartsWhileTheOthersHang) {
  MemoryTaskQueue main;
  ThreadTaskQueue queue({"org.example.test"}, unexpectedRetry);
  constexpr int hanging = 199;
  std::latch allStarted(hanging);
  std::promise<void> release;
  const std::shared_future<void> released = release.get_future().share();
  int ended = 0;
  for (int i = 0; i < hanging; ++i) {
    queue.async([&, released] {
      allStarted.count_down();
      released.wait();
      main.async([&] { ++ended; });
    });
  }
  allStarted.wait();
  bool lastRan = false;
  queue.async([&] { main.async([&] { lastRan = true; }); });
  main.runUntil([&] { return lastRan; });
  EXPECT_EQ(ended, 0);
  release.set_value();
  main.runUntil([&] { return ended == hanging; });
}

TEST(ThreadTaskQueue, ThreadsBearTheLastPartOfTheLabel) {
  MemoryTaskQueue main;
  const auto nameFor = [&](const std::string& label) {
    std::string name;
    ThreadTaskQueue({label}, unexpectedRetry).async([&] {
      char buffer[16] = "";
      pthread_getname_np(pthread_self(), buffer, sizeof buffer);
      main.async([&name, found = std::string(buffer)] { name = found; });
    });
    main.runUntil([&] { return !name.empty(); });
    return name;
  };
  EXPECT_EQ(nameFor("com.tovenworks.quillmar.commands"), "commands");
  EXPECT_EQ(nameFor("a.label.thatIsLongerThanThreadNames"), "thatIsLongerTha");
  EXPECT_EQ(nameFor("plain"), "plain");
}

TEST(ThreadTaskQueue, EverySignalIsBlockedInItsThreads) {
  MemoryTaskQueue main;
  bool done = false;
  sigset_t mask;
  sigemptyset(&mask);
  ThreadTaskQueue({"test"}, unexpectedRetry).async([&] {
    sigset_t current;
    pthread_sigmask(SIG_BLOCK, nullptr, &current);
    main.async([&, current] {
      mask = current;
      done = true;
    });
  });
  main.runUntil([&] { return done; });
  for (const int signal : {SIGHUP, SIGINT, SIGTERM, SIGCHLD, SIGUSR1, SIGPIPE, SIGWINCH}) {
    EXPECT_TRUE(sigismember(&mask, signal)) << signal;
  }
}

TEST(ThreadTaskQueue, TasksWithoutAThreadAreTakenByThoseThatEnd) {
  MemoryTaskQueue main;
  LimitedThreads system;
  system.allowed = 1;
  ThreadTaskQueue queue({}, unexpectedRetry, system.starter());
  std::promise<void> release;
  std::string order;
  queue.async([&, released = release.get_future().share()] {
    released.wait();
    main.async([&] { order += 'a'; });
  });
  queue.async([&] { main.async([&] { order += 'b'; }); });
  queue.async([&] { main.async([&] { order += 'c'; }); });
  EXPECT_EQ(system.refusals, 2);
  EXPECT_EQ(main.runPending(), 0u);
  release.set_value();
  main.runUntil([&] { return order.size() == 3; });
  EXPECT_EQ(order, "abc");
  EXPECT_EQ(system.threads.size(), 1u);
}

TEST(ThreadTaskQueue, WithNoThreadAtAllItTriesAgainUntilItGetsOne) {
  MemoryTaskQueue main;
  LimitedThreads system;
  std::vector<TaskQueue::Task> retries;
  const auto runLater = [&](std::chrono::milliseconds delay, TaskQueue::Task task) {
    EXPECT_GT(delay.count(), 0);
    retries.push_back(std::move(task));
  };
  ThreadTaskQueue queue({}, runLater, system.starter());
  int ran = 0;
  for (int i = 0; i < 3; ++i) queue.async([&] { main.async([&] { ++ran; }); });
  EXPECT_EQ(system.refusals, 3);
  ASSERT_EQ(retries.size(), 1u);
  std::exchange(retries, {})[0]();
  EXPECT_EQ(system.refusals, 4);
  ASSERT_EQ(retries.size(), 1u);
  system.allowed = 1;
  std::exchange(retries, {})[0]();
  main.runUntil([&] { return ran == 3; });
  EXPECT_EQ(retries.size(), 0u);
}

TEST(ThreadTaskQueue, TheMainLoopGoesOnUntilTheSystemHasAThread) {
  MainLoopTaskQueue main;
  LimitedThreads system;
  ThreadTaskQueue queue({}, MainLoopTaskQueue::asyncAfter, system.starter());
  bool ran = false;
  queue.async([&] { main.async([&] { ran = true; }); });
  bool wentOn = false;
  main.async([&] { wentOn = true; });
  runMainLoopUntil([&] { return system.refusals == 2; });
  EXPECT_TRUE(wentOn);
  EXPECT_FALSE(ran);
  system.allowed = 1;
  runMainLoopUntil([&] { return ran; });
}

TEST(MainLoopTaskQueue, ADelayedTaskRunsInTheLoopWhenItsTimeHasCome) {
  bool early = false;
  bool due = false;
  MainLoopTaskQueue::asyncAfter(std::chrono::hours(1), [&] { early = true; });
  MainLoopTaskQueue::asyncAfter(std::chrono::milliseconds(1), [&] { due = true; });
  EXPECT_FALSE(due);
  runMainLoopUntil([&] { return due; });
  EXPECT_FALSE(early);
}

TEST(ThreadTaskQueue, TheProgramLeavesAtOnceWhileTasksHang) {
  PosixProcesses processes(PosixProcesses::Sessions::separate);
  auto launched = processes.launch(testProgram({"leaveWithHangingTasks"}));
  ASSERT_TRUE(launched.ok()) << launched.error().description;
  EXPECT_EQ(launched.value()->readToEnd().value().standardOutput, "leaving");
  EXPECT_EQ(launched.value()->waitForExit(), 0);
}

}  // namespace
}  // namespace quillmar
