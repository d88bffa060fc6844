#include "platform/linux/x11/x11_connection.h"

#include <chrono>
#include <csignal>
#include <string>

#include <gtest/gtest.h>

#include "tests/linux/child_programs.h"

namespace quillmar {
namespace {

const X11Connection::Handlers nobody{[](const xcb_generic_event_t&) {}, nullptr};

constexpr std::chrono::milliseconds shortTimeout(50);

std::string errorOf(const std::string& display, std::chrono::milliseconds timeout) {
  const auto connection = X11Connection::open(display, nobody, timeout);
  return connection ? "connected" : connection.error().description;
}

TEST(X11ConnectionTest, AServerThatIsGoneCannotBeReached) {
  EXPECT_EQ(errorOf(":7777", std::chrono::hours(1)), "the X display “:7777” cannot be reached");
}

TEST(X11ConnectionTest, AServerThatNeverAnswersIsWaitedForOnce) {
  XServer server;
  server.signal(SIGSTOP);
  const std::string error = "the X display “" + server.display() + "” does not answer";
  EXPECT_EQ(errorOf(server.display(), shortTimeout), error);
  // Waiting would take an hour.
  EXPECT_EQ(errorOf(server.display(), std::chrono::hours(1)), error);
}

TEST(X11ConnectionTest, AServerThatAnswersLateIsUsedAtTheNextTry) {
  XServer server;
  server.signal(SIGSTOP);
  EXPECT_FALSE(X11Connection::open(server.display(), nobody, shortTimeout).ok());
  server.signal(SIGCONT);
  // Its answer to the first try.
  while (!X11Connection::open(server.display(), nobody)) {
  }
}

TEST(X11ConnectionTest, ALateReplyDoesNotLeakMemory) {
  XServer server;
  server.signal(SIGSTOP);
  EXPECT_FALSE(X11Connection::open(server.display(), nobody, shortTimeout).ok());
  server.signal(SIGCONT);
  // Its answer has come, too, once a later one has.
  EXPECT_TRUE(runCommand({"xdpyinfo", "-display", server.display()}));
  // Forgets that answer. A test that follows in this process may use a display of the same name.
  EXPECT_NE(errorOf(":7777", shortTimeout), "connected");
}

}  // namespace
}  // namespace quillmar
