#include "platform/linux/application/main_loop.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/bus/glib_pointers.h"

namespace quillmar {
namespace {

using testing::ElementsAre;

/// A second loop on the same context, as a toolkit brings one.
class SecondLoop {
 public:
  explicit SecondLoop(std::vector<std::string>& events) : events_(events) {}

  MainLoop::Successor successor() {
    return {.run =
                [this] {
                  events_.emplace_back("second loop");
                  g_main_loop_run(loop_.get());
                  events_.emplace_back("second loop over");
                },
            .quit = [this] { g_main_loop_quit(loop_.get()); }};
  }

  /// It ends for a reason of its own.
  void end() { g_main_loop_quit(loop_.get()); }

 private:
  std::vector<std::string>& events_;
  GMainLoopPtr loop_{g_main_loop_new(nullptr, false)};
};

class MainLoopTest : public testing::Test {
 protected:
  /// Has the main loop, whichever runs, do this in an iteration of its own.
  static void later(std::function<void()> task, int priority = G_PRIORITY_DEFAULT) {
    g_idle_add_full(
        priority,
        [](gpointer data) -> gboolean {
          (*static_cast<std::function<void()>*>(data))();
          return G_SOURCE_REMOVE;
        },
        new std::function<void()>(std::move(task)),
        [](gpointer data) { delete static_cast<std::function<void()>*>(data); });
  }

  void note(const char* event) { events.emplace_back(event); }

  std::vector<std::string> events;
  SecondLoop second{events};
  MainLoop loop;
};

TEST_F(MainLoopTest, RunsUntilItIsToldToQuit) {
  later([&] {
    note("task");
    loop.quit();
  });
  loop.run();
  EXPECT_THAT(events, ElementsAre("task"));
}

TEST_F(MainLoopTest, ToldToQuitBeforeItRunsItDoesNotBegin) {
  bool ran = false;
  later([&] { ran = true; });
  loop.quit();
  loop.run();
  EXPECT_FALSE(ran);
  while (!ran) g_main_context_iteration(nullptr, true);
}

TEST_F(MainLoopTest, TheIterationThatHandsOverEndsBeforeTheSecondLoopBegins) {
  later([&] {
    loop.handOver(second.successor());
    note("rest of the iteration");
    later([&] {
      note("task in the second loop");
      loop.quit();
    });
  });
  loop.run();
  EXPECT_THAT(events, ElementsAre("rest of the iteration", "second loop", "task in the second loop",
                                  "second loop over"));
}

TEST_F(MainLoopTest, WhatWaitedInTheFirstLoopRunsInTheSecond) {
  later([&] { loop.handOver(second.successor()); });
  later(
      [&] {
        note("waited");
        loop.quit();
      },
      G_PRIORITY_LOW);
  loop.run();
  EXPECT_THAT(events, ElementsAre("second loop", "waited", "second loop over"));
}

TEST_F(MainLoopTest, HandedOverBeforeItRunsItBeginsInTheSecondLoop) {
  loop.handOver(second.successor());
  later([&] { loop.quit(); });
  loop.run();
  EXPECT_THAT(events, ElementsAre("second loop", "second loop over"));
}

TEST_F(MainLoopTest, ToldToQuitInTheTurnThatHandsOverItDoesNotBeginTheSecondLoop) {
  later([&] {
    loop.handOver(second.successor());
    loop.quit();
    note("over");
  });
  loop.run();
  EXPECT_THAT(events, ElementsAre("over"));
}

TEST_F(MainLoopTest, ToldToQuitEarlierItDoesNotHandOverEither) {
  later([&] {
    loop.quit();
    loop.handOver(second.successor());
    note("over");
  });
  loop.run();
  EXPECT_THAT(events, ElementsAre("over"));
}

TEST_F(MainLoopTest, TheEndOfTheSecondLoopIsTheEnd) {
  later([&] { loop.handOver(second.successor()); });
  later([&] { second.end(); }, G_PRIORITY_LOW);
  loop.run();
  loop.quit();
  EXPECT_THAT(events, ElementsAre("second loop", "second loop over"));
}

}  // namespace
}  // namespace quillmar
