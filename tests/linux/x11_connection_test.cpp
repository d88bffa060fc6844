#include "platform/linux/x11/x11_connection.h"

#include <chrono>
#include <csignal>

#include <gtest/gtest.h>

#include "tests/linux/child_programs.h"

namespace quillmar {
namespace {

const X11Connection::Handlers nobody{[](const xcb_generic_event_t&) {}, nullptr};

TEST(X11ConnectionTest, AServerThatIsGoneIsNoConnection) {
  EXPECT_EQ(X11Connection::open(":7777", nobody), nullptr);
}

TEST(X11ConnectionTest, AServerThatNeverAnswersIsWaitedForOnce) {
  XServer server;
  server.signal(SIGSTOP);
  EXPECT_EQ(X11Connection::open(server.display(), nobody, std::chrono::milliseconds(50)), nullptr);
  // This would take until the end of the test's time.
  EXPECT_EQ(X11Connection::open(server.display(), nobody, std::chrono::hours(1)), nullptr);
}

TEST(X11ConnectionTest, AServerThatAnswersLateIsTakenAtTheNextTry) {
  XServer server;
  server.signal(SIGSTOP);
  EXPECT_EQ(X11Connection::open(server.display(), nobody, std::chrono::milliseconds(50)), nullptr);
  server.signal(SIGCONT);
  // Its answer to the first try.
  while (X11Connection::open(server.display(), nobody) == nullptr) {
  }
}

TEST(X11ConnectionTest, AServerThatAnswersWhenNobodyAsksAnyMoreLosesNoMemory) {
  XServer server;
  server.signal(SIGSTOP);
  EXPECT_EQ(X11Connection::open(server.display(), nobody, std::chrono::milliseconds(50)), nullptr);
  server.signal(SIGCONT);
  // Its answer has come, too, once a later one has.
  EXPECT_TRUE(runCommand({"xdpyinfo", "-display", server.display()}));
}

}  // namespace
}  // namespace quillmar
