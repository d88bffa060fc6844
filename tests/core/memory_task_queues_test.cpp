#include "platform/memory/memory_task_queues.h"

#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "tests/conformance/task_queues_conformance.h"

namespace quillmar {
namespace {

class MemoryTaskQueuesFixture {
 public:
  MemoryTaskQueues& queues() { return queues_; }

  void runUntil(const std::function<bool()>& done) {
    while (!done()) {
      if (queues_.concurrentTasks().runPending() > 0) continue;
      // Only another thread can hand over the next task.
      bool woken = false;
      queues_.runUntil([&] { return std::exchange(woken, true) || done(); });
    }
  }

 private:
  MemoryTaskQueues queues_;
};

INSTANTIATE_TYPED_TEST_SUITE_P(Memory, TaskQueuesConformance, MemoryTaskQueuesFixture);

TEST(MemoryTaskQueues, RunPendingRunsWhatIsHandedOverMeanwhileAndCounts) {
  MemoryTaskQueues queues;
  std::string order;
  queues.mainQueue().async([&] {
    order += 'a';
    queues.mainQueue().async([&] { order += 'b'; });
  });
  EXPECT_EQ(queues.mainQueue().pendingCount(), 1u);
  EXPECT_EQ(queues.runPending(), 2u);
  EXPECT_EQ(order, "ab");
  EXPECT_EQ(queues.mainQueue().pendingCount(), 0u);
  EXPECT_EQ(queues.runPending(), 0u);
}

TEST(MemoryTaskQueues, ConcurrentTasksRunOnlyWhenTold) {
  MemoryTaskQueues queues;
  const auto queue = queues.makeConcurrentQueue({"org.example.test"});
  bool ran = false;
  EXPECT_TRUE(queue->async([&] { ran = true; }).ok());
  EXPECT_EQ(queues.runPending(), 0u);
  EXPECT_FALSE(ran);
  EXPECT_EQ(queues.concurrentTasks().runPending(), 1u);
  EXPECT_TRUE(ran);
  ASSERT_EQ(queues.concurrentQueues().size(), 1u);
  EXPECT_EQ(queues.concurrentQueues()[0].label, "org.example.test");
}

TEST(MemoryTaskQueues, RunAllGoesOnUntilNoQueueHasATask) {
  MemoryTaskQueues queues;
  const auto queue = queues.makeConcurrentQueue({});
  std::string order;
  queues.mainQueue().async([&] {
    const auto started = queue->async([&] {
      order += 'a';
      queues.mainQueue().async([&] { order += 'b'; });
    });
    EXPECT_TRUE(started.ok());
  });
  queues.runAll();
  EXPECT_EQ(order, "ab");
}

TEST(MemoryTaskQueues, RunUntilStopsAsSoonAsItsConditionHolds) {
  MemoryTaskQueues queues;
  int ran = 0;
  for (int i = 0; i < 5; ++i) queues.mainQueue().async([&] { ++ran; });
  queues.runUntil([&] { return ran == 3; });
  EXPECT_EQ(ran, 3);
  EXPECT_EQ(queues.mainQueue().pendingCount(), 2u);
}

TEST(MemoryTaskQueues, RunUntilSleepsUntilAnotherThreadHandsOverATask) {
  MemoryTaskQueues queues;
  bool done = false;
  std::thread other([&] { queues.mainQueue().async([&] { done = true; }); });
  queues.runUntil([&] { return done; });
  other.join();
  EXPECT_TRUE(done);
}

}  // namespace
}  // namespace quillmar
