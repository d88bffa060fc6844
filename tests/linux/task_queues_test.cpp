#include <chrono>
#include <functional>
#include <future>
#include <latch>
#include <string>

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

TEST(ThreadTaskQueue, TheTwoHundredthTaskStartsWhileTheOthersHang) {
  MemoryTaskQueue main;
  ThreadTaskQueue queue({"org.example.test"});
  constexpr int hanging = 199;
  std::latch allStarted(hanging);
  std::promise<void> release;
  const std::shared_future<void> released = release.get_future().share();
  int ended = 0;
  for (int i = 0; i < hanging; ++i) {
    const auto started = queue.async([&, released] {
      allStarted.count_down();
      released.wait();
      main.async([&] { ++ended; });
    });
    ASSERT_TRUE(started.ok());
  }
  allStarted.wait();
  bool lastRan = false;
  EXPECT_TRUE(queue.async([&] { main.async([&] { lastRan = true; }); }).ok());
  main.runUntil([&] { return lastRan; });
  EXPECT_EQ(ended, 0);
  release.set_value();
  main.runUntil([&] { return ended == hanging; });
}

TEST(ThreadTaskQueue, ThreadsAreNamedAfterTheLastPartOfTheLabel) {
  MemoryTaskQueue main;
  const auto nameFor = [&](const std::string& label) {
    std::string name;
    const auto started = ThreadTaskQueue({label}).async([&] {
      char buffer[16] = "";
      pthread_getname_np(pthread_self(), buffer, sizeof buffer);
      main.async([&name, found = std::string(buffer)] { name = found; });
    });
    EXPECT_TRUE(started.ok());
    main.runUntil([&] { return !name.empty(); });
    return name;
  };
  EXPECT_EQ(nameFor("com.tovenworks.quillmar.commands"), "commands");
  EXPECT_EQ(nameFor("a.label.thatIsLongerThanThreadNames"), "thatIsLongerTha");
  EXPECT_EQ(nameFor("plain"), "plain");
}

TEST(ThreadTaskQueue, WithoutAThreadATaskFailsAndNeverRuns) {
  bool hasThread = false;
  ThreadTaskQueue queue([&](const TaskQueue::Task& task) {
    if (hasThread) task();
    return hasThread;
  });
  int ran = 0;
  const auto refused = queue.async([&] { ++ran; });
  ASSERT_FALSE(refused.ok());
  EXPECT_EQ(refused.error().description, "The system cannot start another thread.");
  hasThread = true;
  EXPECT_TRUE(queue.async([&] { ++ran; }).ok());
  EXPECT_EQ(ran, 1);
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

TEST(ThreadTaskQueue, TheProgramExitsAtOnceWhileTasksHang) {
  PosixProcesses processes(PosixProcesses::Terminal::detach);
  auto launched = processes.launch(testProgram({"leaveWithHangingTasks"}));
  ASSERT_TRUE(launched.ok()) << launched.error().description;
  EXPECT_EQ(launched.value()->readToEnd().value().standardOutput, "leaving");
  EXPECT_EQ(launched.value()->waitForExit(), 0);
}

}  // namespace
}  // namespace quillmar
