#include "platform/call_with_timeout.h"

#include <atomic>
#include <chrono>
#include <latch>
#include <memory>

#include <gtest/gtest.h>

#include "tests/core/timeouts.h"

namespace quillmar {
namespace {

/// A server that replies only when the test lets it, and counts its calls.
struct SilentServer {
  std::latch mayReply{1};
  std::atomic<int> calls = 0;
};

class CallWithTimeoutTest : public testing::Test {
 protected:
  Result<int, CallFailure> callSilentServer(std::chrono::milliseconds timeout) {
    return call_(
        "silent",
        [server = silent_] {
          ++server->calls;
          server->mayReply.wait();
          return 7;
        },
        timeout);
  }

  CallWithTimeout<int> call_;
  std::shared_ptr<SilentServer> silent_ = std::make_shared<SilentServer>();
};

TEST_F(CallWithTimeoutTest, AServerThatRepliesIsCalledEachTime) {
  EXPECT_EQ(call_(
                "quick", [] { return 1; }, longTimeout)
                .value(),
            1);
  EXPECT_EQ(call_(
                "quick", [] { return 2; }, longTimeout)
                .value(),
            2);
}

TEST_F(CallWithTimeoutTest, AServerThatTimedOutIsNotWaitedForAgain) {
  EXPECT_EQ(callSilentServer(noTimeout).error(), CallFailure::timedOut);
  // Waiting would take an hour.
  EXPECT_EQ(callSilentServer(longTimeout).error(), CallFailure::timedOut);
  silent_->mayReply.count_down();
}

TEST_F(CallWithTimeoutTest, ALateReplyIsReturnedWithoutASecondCall) {
  EXPECT_EQ(callSilentServer(noTimeout).error(), CallFailure::timedOut);
  silent_->mayReply.count_down();
  auto result = callSilentServer(noTimeout);
  while (!result) result = callSilentServer(noTimeout);
  EXPECT_EQ(result.value(), 7);
  EXPECT_EQ(silent_->calls, 1);
}

TEST_F(CallWithTimeoutTest, AnotherServerIsCalledAndWaitedFor) {
  EXPECT_EQ(callSilentServer(noTimeout).error(), CallFailure::timedOut);
  EXPECT_EQ(call_(
                "other", [] { return 3; }, longTimeout)
                .value(),
            3);
  silent_->mayReply.count_down();
}

TEST(CallWithTimeout, WithoutAThreadTheCallFailsAndTheNextOneTriesAgain) {
  bool hasThread = false;
  CallWithTimeout<int> call([&](std::function<void()> task) {
    return hasThread && startDetachedThread(std::move(task));
  });
  const auto one = [] { return 1; };
  EXPECT_EQ(call("server", one, longTimeout).error(), CallFailure::noThread);
  hasThread = true;
  EXPECT_EQ(call("server", one, longTimeout).value(), 1);
}

}  // namespace
}  // namespace quillmar
