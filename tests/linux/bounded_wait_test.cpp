#include "platform/linux/processes/bounded_wait.h"

#include <chrono>
#include <future>
#include <memory>

#include <gtest/gtest.h>

namespace quillmar {
namespace {

constexpr std::chrono::hours longEnough{1};

TEST(BoundedWait, WaitsForTheWork) {
  bool done = false;
  EXPECT_TRUE(endsWithin(longEnough, [&] { done = true; }));
  EXPECT_TRUE(done);
}

TEST(BoundedWait, WorkThatIsLateGoesOn) {
  const auto gate = std::make_shared<std::promise<void>>();
  const auto done = std::make_shared<std::promise<void>>();
  EXPECT_FALSE(endsWithin(std::chrono::milliseconds(10), [gate, done] {
    gate->get_future().wait();
    done->set_value();
  }));
  gate->set_value();
  EXPECT_EQ(done->get_future().wait_for(longEnough), std::future_status::ready);
}

}  // namespace
}  // namespace quillmar
