// How hot keys survive the failure and the end of sessions, backends and portals.

#include <chrono>
#include <cstdint>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/processes/main_loop_task_queue.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/portal_hot_keys_fixture.h"
#include "tests/linux/portal_service.h"
#include "tests/linux/private_bus.h"
#include "tests/virtual_keys.h"

namespace quillmar {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::StartsWith;
using Kind = PortalService::Kind;
using std::chrono::milliseconds;

using PortalRecoveryTest = PortalHotKeysTest;

TEST_F(PortalRecoveryTest, ADeniedKeyIsAskedForAgainWhenTheDesktopClosesTheSession) {
  start(Kind::documented);
  desktop_->deny("LOGO+j");
  reload({keyJ, keyK});
  refusals();
  desktop_->takeCalls();
  desktop_->closeSession();
  runMainLoopUntil([&] { return desktop_->hasSession(); });
  program_->settle();
  EXPECT_THAT(desktop_->takeCalls(), ElementsAre("CreateSession", "BindShortcuts LOGO+j LOGO+k"));
  EXPECT_THAT(refusals(), IsEmpty());
  reload({keyJ, keyK});
  EXPECT_THAT(desktop_->takeCalls(), IsEmpty());
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::notGranted));
}

TEST_F(PortalRecoveryTest, ADialogThatFailsIsNotRepeatedBeforeTheNextReload) {
  start(Kind::documented);
  desktop_->failDialogs();
  reload({keyJ});
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::serviceFailed));
  EXPECT_THAT(desktop_->takeCalls(), ElementsAre("CreateSession", "BindShortcuts LOGO+j"));
  reload({keyJ});
  EXPECT_THAT(desktop_->takeCalls(), ElementsAre("Close", "CreateSession", "BindShortcuts LOGO+j"));
}

TEST_F(PortalRecoveryTest, ASessionThatTheDesktopClosesIsReplaced) {
  for (const Kind kind : {Kind::documented, Kind::plasma}) {
    start(kind);
    reload({keyJ});
    desktop_->closeSession();
    runMainLoopUntil([&] { return desktop_->hasSession(); });
    program_->settle();
    EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
    EXPECT_THAT(refusals(), IsEmpty());
  }
}

TEST_F(PortalRecoveryTest, ADesktopThatClosesEverySessionIsAskedAFewTimesOnly) {
  start(Kind::documented);
  reload({keyJ});
  for (int i = 0; i < 4; ++i) {
    desktop_->closeSession();
    runMainLoopUntil([&] { return desktop_->hasSession() || !refused_.empty(); });
    program_->settle();
  }
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::serviceFailed));
  EXPECT_FALSE(desktop_->hasSession());
}

TEST_F(PortalRecoveryTest, ASessionThatWorkedForLongMayBeReplacedAgain) {
  start(Kind::documented);
  reload({keyJ});
  for (int i = 0; i < 10; ++i) {
    program_->advance(std::chrono::minutes(2));
    desktop_->closeSession();
    runMainLoopUntil([&] { return desktop_->hasSession() || !refused_.empty(); });
    program_->settle();
  }
  EXPECT_THAT(refusals(), IsEmpty());
}

TEST_F(PortalRecoveryTest, HotKeysWorkAfterARestartOfThePortal) {
  for (const Kind kind : {Kind::documented, Kind::plasma}) {
    start(kind);
    reload({keyJ});
    desktop_->stopPortal();
    desktop_->startPortal();
    runMainLoopUntil([&] { return desktop_->hasSession(); });
    program_->settle();
    EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
    EXPECT_THAT(refusals(), IsEmpty());
  }
}

TEST_F(PortalRecoveryTest, HotKeysAreRefusedIfThePortalDoesNotReturn) {
  start(Kind::documented);
  reload({keyJ});
  desktop_->stopPortal();
  runMainLoopUntil([&] { return !refused_.empty(); });
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::serviceFailed));
}

TEST_F(PortalRecoveryTest, HotKeysWorkAfterARestartOfTheBackend) {
  for (const Kind kind : {Kind::documented, Kind::plasma}) {
    start(kind);
    reload({keyJ});
    desktop_->takeCalls();
    desktop_->stopBackend();
    runMainLoopUntil([&] { return !program_->hotKeys().isSettled(); });
    program_->settle();
    EXPECT_THAT(desktop_->takeCalls(), Contains(StartsWith("CreateSession")));
    EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
    EXPECT_THAT(refusals(), IsEmpty());
  }
}

TEST_F(PortalRecoveryTest, HotKeysWorkIfTheBackendEndsWhileASessionStarts) {
  for (const Kind kind : {Kind::documented, Kind::plasma}) {
    start(kind);
    add(keyJ);
    runMainLoopUntil([&] { return desktop_->hasSession(); });
    desktop_->stopBackend();
    program_->settle();
    EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
    EXPECT_THAT(refusals(), IsEmpty());
  }
}

TEST_F(PortalRecoveryTest, TheEndOfAnotherBackendChangesNothing) {
  start(Kind::documented);
  reload({keyJ});
  desktop_->takeCalls();
  const auto other = bus_.connect();
  const char* const name = "org.freedesktop.impl.portal.desktop.other";
  ASSERT_TRUE(takeName(other.get(), name));
  releaseName(other.get(), name);
  EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
  EXPECT_THAT(desktop_->takeCalls(), ElementsAre("ListShortcuts"));
}

TEST_F(PortalRecoveryTest, WithoutAWorkingPortalEveryHotKeyIsRefused) {
  for (const Kind kind : {Kind::withoutShortcuts, Kind::failing}) {
    start(kind);
    reload({keyJ, keyK});
    EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::noService, HotKeyStatus::noService));
  }
  desktop_.reset();
  startProgram();
  reload({keyJ});
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::noService));
}

TEST_F(PortalRecoveryTest, AFirstSessionThatFailsIsStartedAgainBeforeHotKeysAreRefused) {
  for (const Kind kind : {Kind::documented, Kind::plasma}) {
    startDesktop(kind);
    desktop_->failSessions(3);
    startProgram();
    reload({keyJ});
    EXPECT_THAT(refusals(), IsEmpty());
    EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
  }
}

TEST_F(PortalRecoveryTest, HotKeysAreRefusedIfThePortalDoesNotRespond) {
  startDesktop(Kind::mute);
  startProgram(Environment{}, milliseconds(1));
  reload({keyJ});
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::noService));
}

TEST_F(PortalRecoveryTest, ADialogMayStayOpenForLongerThanOtherRequestsMayTake) {
  startDesktop(Kind::documented);
  desktop_->keepDialogsOpen();
  constexpr milliseconds timeout(200);
  startProgram(Environment{}, timeout);
  add(keyJ);
  runMainLoopUntil([&] { return desktop_->hasDialog(); });
  bool isOver = false;
  MainLoopTaskQueue::asyncAfter(timeout, [&] { isOver = true; });
  runMainLoopUntil([&] { return isOver; });
  desktop_->answerDialog();
  program_->settle();
  EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
  EXPECT_THAT(desktop_->takeCalls(), ElementsAre("CreateSession", "BindShortcuts LOGO+j"));
}

TEST_F(PortalRecoveryTest, ASessionWithoutAValidPathCountsAsFailed) {
  for (const char* const results :
       {"@a{sv} {}", "{'session_handle': <'no path'>}", "{'session_handle': <7>}"}) {
    SCOPED_TRACE(results);
    startDesktop(Kind::documented);
    desktop_->replaceSessionHandle(results);
    startProgram();
    reload({keyJ});
    EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::noService));
  }
}

TEST_F(PortalRecoveryTest, TheSessionsPathMayHaveTheTypeOfAnObjectPath) {
  startDesktop(Kind::documented);
  desktop_->sendHandlesAsObjectPaths();
  startProgram();
  reload({keyJ});
  EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
  reload({});
  EXPECT_FALSE(desktop_->hasSession());
}

TEST_F(PortalRecoveryTest, APortalThatAppearsLaterIsUsedByTheNextReload) {
  startProgram();
  reload({keyJ});
  refusals();
  startDesktop(Kind::documented);
  reload({keyJ});
  EXPECT_THAT(refusals(), IsEmpty());
  EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
}

}  // namespace
}  // namespace quillmar
