#include "platform/detached_thread.h"

#include <csignal>
#include <future>
#include <string>

#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <unistd.h>

namespace quillmar {
namespace {

TEST(DetachedThread, EverySignalIsBlockedInIt) {
  std::promise<sigset_t> mask;
  ASSERT_TRUE(startDetachedThread([&] {
    sigset_t current;
    pthread_sigmask(SIG_BLOCK, nullptr, &current);
    mask.set_value(current);
  }));
  const sigset_t found = mask.get_future().get();
  for (const int signal : {SIGHUP, SIGINT, SIGTERM, SIGCHLD, SIGUSR1, SIGPIPE, SIGWINCH}) {
    EXPECT_TRUE(sigismember(&found, signal)) << signal;
  }
}

TEST(DetachedThread, ItHasItsName) {
  std::promise<std::string> name;
  ASSERT_TRUE(startDetachedThread(
      [&] {
        char buffer[16] = "";
        pthread_getname_np(pthread_self(), buffer, sizeof buffer);
        name.set_value(buffer);
      },
      "commands"));
  EXPECT_EQ(name.get_future().get(), "commands");
}

#ifndef QUILLMAR_SANITIZED  // Sanitizers need more address space than this leaves.

/// Ends the process: with 0 when the refusal of a thread is an ordinary failure.
[[noreturn]] void startThreadsUntilRefused() {
  // No room for further stacks. A limit on processes would not apply to root.
  const rlimit limit{1 << 20, 1 << 20};
  setrlimit(RLIMIT_AS, &limit);
  // The first ones may get the stacks of threads that have ended.
  for (int i = 0; i < 1000; ++i) {
    if (!startDetachedThread([] { pause(); })) _exit(0);
  }
  _exit(1);
}

TEST(DetachedThread, ARefusalOfTheSystemIsReturned) {
  EXPECT_EXIT(startThreadsUntilRefused(), testing::ExitedWithCode(0), "");
}

#endif

}  // namespace
}  // namespace quillmar
