// What every implementation of the task queues does. A fixture names the implementation: it is
// default-constructible, gives out `queues()`, and runs waiting tasks in
// `void runUntil(const std::function<bool()>& done)`, failing the test when that takes too long.

#pragma once

#include <algorithm>
#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/task_queue.h"

namespace quillmar {

template <class Fixture>
class TaskQueuesConformance : public testing::Test {
 protected:
  TaskQueue& mainQueue() { return fixture_.queues().mainQueue(); }
  std::unique_ptr<ConcurrentQueue> makeConcurrentQueue() {
    return fixture_.queues().makeConcurrentQueue({"org.example.conformance"});
  }

  Fixture fixture_;
};

TYPED_TEST_SUITE_P(TaskQueuesConformance);

TYPED_TEST_P(TaskQueuesConformance, AMainTaskDoesNotRunInsideTheCallThatHandsItOver) {
  bool ran = false;
  this->mainQueue().async([&] { ran = true; });
  EXPECT_FALSE(ran);
  this->fixture_.runUntil([&] { return ran; });
}

TYPED_TEST_P(TaskQueuesConformance, MainTasksRunInTheOrderInWhichTheyWereHandedOver) {
  std::vector<int> order;
  for (int i = 0; i < 100; ++i) {
    this->mainQueue().async([&order, i] { order.push_back(i); });
  }
  this->fixture_.runUntil([&] { return order.size() == 100; });
  std::vector<int> expected;
  for (int i = 0; i < 100; ++i) expected.push_back(i);
  EXPECT_EQ(order, expected);
}

TYPED_TEST_P(TaskQueuesConformance, AMainTaskFromAMainTaskRunsAfterThoseThatWait) {
  std::string order;
  this->mainQueue().async([&] {
    order += 'a';
    this->mainQueue().async([&] { order += 'c'; });
  });
  this->mainQueue().async([&] { order += 'b'; });
  this->fixture_.runUntil([&] { return order.size() == 3; });
  EXPECT_EQ(order, "abc");
}

TYPED_TEST_P(TaskQueuesConformance, MainTasksFromAnotherThreadRunOnTheMainThread) {
  constexpr int count = 1000;
  std::vector<int> order;
  bool everOnAnotherThread = false;
  const std::thread::id mainThread = std::this_thread::get_id();
  std::thread sender([&] {
    for (int i = 0; i < count; ++i) {
      this->mainQueue().async([&, i] {
        everOnAnotherThread |= std::this_thread::get_id() != mainThread;
        order.push_back(i);
      });
    }
  });
  this->fixture_.runUntil([&] { return order.size() == count; });
  sender.join();
  EXPECT_FALSE(everOnAnotherThread);
  EXPECT_TRUE(std::is_sorted(order.begin(), order.end()));
}

TYPED_TEST_P(TaskQueuesConformance, ATaskIsDestroyedOnceItHasRun) {
  int destroyed = 0;
  const auto makeTask = [&] {
    const std::shared_ptr<void> held(nullptr,
                                     [&](void*) { this->mainQueue().async([&] { ++destroyed; }); });
    return [held] {};
  };
  this->mainQueue().async(makeTask());
  EXPECT_TRUE(this->makeConcurrentQueue()->async(makeTask()).ok());
  EXPECT_EQ(destroyed, 0);
  this->fixture_.runUntil([&] { return destroyed == 2; });
}

TYPED_TEST_P(TaskQueuesConformance, EveryConcurrentTaskRunsAndCanReportToTheMainQueue) {
  const std::unique_ptr<ConcurrentQueue> queue = this->makeConcurrentQueue();
  std::vector<int> reports;
  for (int i = 0; i < 50; ++i) {
    const auto started =
        queue->async([&, i] { this->mainQueue().async([&reports, i] { reports.push_back(i); }); });
    ASSERT_TRUE(started.ok());
  }
  this->fixture_.runUntil([&] { return reports.size() == 50; });
  std::vector<int> expected;
  for (int i = 0; i < 50; ++i) expected.push_back(i);
  EXPECT_THAT(reports, testing::UnorderedElementsAreArray(expected));
}

TYPED_TEST_P(TaskQueuesConformance, AConcurrentTaskDoesNotRunInsideTheCallThatHandsItOver) {
  const std::unique_ptr<ConcurrentQueue> queue = this->makeConcurrentQueue();
  std::mutex mutex;
  bool ran = false;
  {
    // Inside the call, the task would wait for this lock for ever.
    const std::lock_guard lock(mutex);
    const auto started = queue->async([&] {
      { const std::lock_guard inner(mutex); }
      this->mainQueue().async([&] { ran = true; });
    });
    ASSERT_TRUE(started.ok());
  }
  this->fixture_.runUntil([&] { return ran; });
}

TYPED_TEST_P(TaskQueuesConformance, TasksOfADestroyedConcurrentQueueStillRun) {
  bool reported = false;
  const auto started = this->makeConcurrentQueue()->async(
      [&] { this->mainQueue().async([&] { reported = true; }); });
  EXPECT_TRUE(started.ok());
  this->fixture_.runUntil([&] { return reported; });
}

REGISTER_TYPED_TEST_SUITE_P(TaskQueuesConformance, AMainTaskDoesNotRunInsideTheCallThatHandsItOver,
                            MainTasksRunInTheOrderInWhichTheyWereHandedOver,
                            AMainTaskFromAMainTaskRunsAfterThoseThatWait,
                            MainTasksFromAnotherThreadRunOnTheMainThread,
                            ATaskIsDestroyedOnceItHasRun,
                            EveryConcurrentTaskRunsAndCanReportToTheMainQueue,
                            AConcurrentTaskDoesNotRunInsideTheCallThatHandsItOver,
                            TasksOfADestroyedConcurrentQueueStillRun);

}  // namespace quillmar
