#include "platform/linux/hot_keys/portal_hot_keys.h"

#include <chrono>
#include <cstdint>
#include <functional>
#include <string>
#include <utility>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/linux/hot_keys/key_symbols.h"
#include "platform/linux/hot_keys/portal_trigger.h"
#include "tests/conformance/hot_keys_conformance.h"
#include "tests/linux/main_loop.h"
#include "tests/linux/portal_hot_keys_fixture.h"
#include "tests/linux/portal_service.h"
#include "tests/linux/private_bus.h"
#include "tests/linux/wayland_seat.h"
#include "tests/virtual_keys.h"

namespace quillmar {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;
using testing::Pair;
using testing::StartsWith;
using testing::UnorderedElementsAre;
using Kind = PortalService::Kind;
using std::chrono::milliseconds;

class RealBackend {
 public:
  HotKeys& hotKeys() { return program_.hotKeys(); }

  void press(std::uint32_t keyCode, std::uint32_t modifiers) {
    const std::string keys = triggerOf(keyCode, modifiers);
    program_.advance(milliseconds(100));
    desktop_.activate(keys);
    program_.advance(milliseconds(100));
    desktop_.deactivate(keys);
  }

  void hold(std::uint32_t keyCode, std::uint32_t modifiers) {
    const std::string keys = triggerOf(keyCode, modifiers);
    for (int i = 0; i < 3; ++i) {
      program_.advance(milliseconds(650));
      desktop_.activate(keys);
    }
    desktop_.deactivate(keys);
  }

  /// A desktop removes the lock modifiers before it looks for a shortcut.
  void setLocks(bool, bool) {}

  bool takeByOtherProgram(std::uint32_t keyCode, std::uint32_t modifiers) {
    return desktop_.take(triggerOf(keyCode, modifiers));
  }
  void releaseByOtherPrograms() { desktop_.releaseTaken(); }
  void settle() { program_.settle(); }
  bool runUntil(const std::function<bool()>& done) { return runMainLoopUntil(done); }

 private:
  static std::string triggerOf(std::uint32_t keyCode, std::uint32_t modifiers) {
    return portalTrigger(keySymbolsOfLayout("us").at(keyCode), modifiers, TriggerDialect::kde)
        .value();
  }

  PrivateBus bus_;
  PortalService desktop_{bus_, Kind::plasma};
  HotKeysOnBus program_{bus_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(Portal, HotKeysConformance, RealBackend);

TEST_F(PortalHotKeysTest, HotKeysOfOneTurnAreBoundAtOnce) {
  start(Kind::documented);
  reload({keyJ, keyK});
  EXPECT_THAT(desktop_->takeCalls(), ElementsAre("CreateSession", "BindShortcuts LOGO+j LOGO+k"));
  EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
  EXPECT_THAT(press("LOGO+k"), ElementsAre(keyK));
}

TEST_F(PortalHotKeysTest, WithoutHotKeysThePortalIsNotUsed) {
  start(Kind::documented);
  program_->hotKeys().unregisterHotKey(add(keyJ));
  program_->settle();
  EXPECT_THAT(desktop_->takeCalls(), IsEmpty());
}

TEST_F(PortalHotKeysTest, AReloadWithTheSameCombinationsSendsNothing) {
  for (const Kind kind : {Kind::documented, Kind::plasma}) {
    start(kind);
    reload({keyJ, keyK});
    desktop_->takeCalls();
    reload({keyK, keyJ});
    EXPECT_THAT(desktop_->takeCalls(), IsEmpty());
    EXPECT_THAT(press("LOGO+k"), ElementsAre(keyK));
  }
}

TEST_F(PortalHotKeysTest, AChangedSetReplacesTheSession) {
  start(Kind::documented);
  reload({keyJ});
  desktop_->takeCalls();
  reload({keyK});
  EXPECT_THAT(desktop_->takeCalls(), ElementsAre("Close", "CreateSession", "BindShortcuts LOGO+k"));
  EXPECT_THAT(press("LOGO+j"), IsEmpty());
  EXPECT_THAT(press("LOGO+k"), ElementsAre(keyK));
}

TEST_F(PortalHotKeysTest, ASetThatChangesWhileASessionStartsIsSentAfterwards) {
  for (const Kind kind : {Kind::documented, Kind::plasma}) {
    start(kind);
    add(keyJ);
    runMainLoopUntil([&] { return desktop_->hasSession(); });
    reload({keyK});
    EXPECT_THAT(press("LOGO+j"), IsEmpty());
    EXPECT_THAT(press("LOGO+k"), ElementsAre(keyK));
    EXPECT_THAT(refusals(), IsEmpty());
  }
}

TEST_F(PortalHotKeysTest, WithoutTheLastHotKeyThereIsNoSession) {
  start(Kind::documented);
  reload({keyJ});
  reload({});
  EXPECT_FALSE(desktop_->hasSession());
}

TEST_F(PortalHotKeysTest, AKeyThatTheUserDeniesIsRefusedAndTheOthersWork) {
  start(Kind::documented);
  desktop_->deny("LOGO+j");
  const HotKeyReference denied = add(keyJ);
  add(keyK);
  program_->settle();
  EXPECT_THAT(refused_, ElementsAre(Pair(denied, HotKeyStatus::notGranted)));
  EXPECT_THAT(press("LOGO+k"), ElementsAre(keyK));
}

TEST_F(PortalHotKeysTest, ADeniedKeyIsRefusedAgainWithoutAnotherDialog) {
  start(Kind::documented);
  desktop_->deny("LOGO+j");
  reload({keyJ, keyK});
  refusals();
  desktop_->takeCalls();
  reload({keyJ, keyK});
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::notGranted));
  EXPECT_THAT(desktop_->takeCalls(), IsEmpty());
}

TEST_F(PortalHotKeysTest, ADeniedKeyThatIsRemovedFromTheSettingsIsNotAskedForAgain) {
  start(Kind::documented);
  desktop_->deny("LOGO+j");
  reload({keyJ, keyK});
  desktop_->takeCalls();
  reload({keyK});
  EXPECT_THAT(desktop_->takeCalls(), ElementsAre("Close", "CreateSession", "BindShortcuts LOGO+k"));
}

TEST_F(PortalHotKeysTest, ADialogThatIsCancelledRefusesAllKeys) {
  start(Kind::documented);
  desktop_->cancelDialogs();
  reload({keyJ, keyK});
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::notGranted, HotKeyStatus::notGranted));
}

TEST_F(PortalHotKeysTest, ABackendThatDoesNotListWhatItBoundIsAsked) {
  start(Kind::silentBind);
  desktop_->deny("LOGO+j");
  reload({keyJ, keyK});
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::notGranted));
  EXPECT_THAT(press("LOGO+k"), ElementsAre(keyK));
}

TEST_F(PortalHotKeysTest, AKeyThatTheUserRemovesInTheSettingsIsRefused) {
  for (const Kind kind : {Kind::documented, Kind::plasma}) {
    start(kind);
    reload({keyJ, keyK});
    desktop_->reassign("LOGO+j", "");
    EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::notGranted));
    EXPECT_THAT(press("LOGO+k"), ElementsAre(keyK));
  }
}

TEST_F(PortalHotKeysTest, AKeyThatTheUserRestoresInTheSettingsIsReportedAndCanBeRegistered) {
  for (const Kind kind : {Kind::documented, Kind::plasma}) {
    start(kind);
    reload({keyJ, keyK});
    desktop_->takeCalls();
    desktop_->reassign("LOGO+j", "");
    EXPECT_EQ(std::exchange(withdrawnRefusals_, 0), 0);
    desktop_->reassign("LOGO+j", "LOGO+j");
    EXPECT_EQ(std::exchange(withdrawnRefusals_, 0), 1);
    EXPECT_THAT(press("LOGO+j"), IsEmpty());
    refusals();
    reload({keyJ, keyK});
    EXPECT_THAT(refusals(), IsEmpty());
    EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
    EXPECT_THAT(desktop_->takeCalls(), IsEmpty());
  }
}

TEST_F(PortalHotKeysTest, AKeyThatTheUserReassignsInTheSettingsRunsTheSameItem) {
  start(Kind::plasma);
  reload({keyJ});
  desktop_->reassign("LOGO+j", "LOGO+x");
  EXPECT_THAT(press("LOGO+x"), ElementsAre(keyJ));
  EXPECT_THAT(refusals(), IsEmpty());
}

TEST_F(PortalHotKeysTest, TheActivationHasTheDesktopsTokenOrTime) {
  start(Kind::documented);
  reload({keyJ, keyK});
  desktop_->activate("LOGO+j", 4711);
  EXPECT_EQ(activation_, (Activation{.timestamp = 4711, .token = ""}));
  desktop_->activate("LOGO+k", 0, "token-1");
  EXPECT_EQ(activation_, (Activation{.timestamp = 0, .token = "token-1"}));
}

TEST_F(PortalHotKeysTest, AHeldKeyThatANestedServerRepeatsAsPressesFiresOnce) {
  start(Kind::plasma);
  reload({keyJ});
  desktop_->press("LOGO+j");
  for (int i = 0; i < 5; ++i) {
    program_->advance(milliseconds(5));
    desktop_->press("LOGO+j");
  }
  EXPECT_THAT(std::exchange(pressed_, {}), ElementsAre(keyJ));
  EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
}

TEST_F(PortalHotKeysTest, AKeyWhoseReleaseWasLostWorksAgain) {
  start(Kind::plasma);
  reload({keyJ});
  desktop_->activate("LOGO+j");
  program_->advance(std::chrono::seconds(6));
  EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ, keyJ));
}

TEST_F(PortalHotKeysTest, Plasma5GetsItsKeysWithTheSessionAndOpensNoWindow) {
  start(Kind::plasma);
  reload({keyJ, keyK});
  reload({keyK});
  EXPECT_THAT(desktop_->takeCalls(), Not(Contains(StartsWith("BindShortcuts"))));
  EXPECT_THAT(press("LOGO+k"), ElementsAre(keyK));
  EXPECT_THAT(refusals(), IsEmpty());
}

TEST_F(PortalHotKeysTest, OnKdeAChangedShortcutFreesTheOldKey) {
  start(Kind::plasma);
  reload({keyJ});
  reload({keyK});
  EXPECT_THAT(desktop_->stored(),
              ElementsAre(Pair("Quillmar", ElementsAre(Pair("LOGO+k", "LOGO+k")))));
  reload({});
  EXPECT_THAT(desktop_->stored(), ElementsAre(Pair("Quillmar", IsEmpty())));
}

TEST_F(PortalHotKeysTest, OnKdeKeysOfAnEarlierRunAreFreed) {
  start(Kind::plasma);
  reload({keyJ});
  program_.reset();
  desktop_->closeSession();
  startProgram();
  references_.clear();
  reload({keyK});
  EXPECT_THAT(desktop_->stored(),
              ElementsAre(Pair("Quillmar", ElementsAre(Pair("LOGO+k", "LOGO+k")))));
}

TEST_F(PortalHotKeysTest, OnKdeKeysWorkAfterTheProgramWasStartedInAnotherWay) {
  start(Kind::plasma);
  desktop_->setApplicationID("org.kde.konsole");
  reload({keyJ});
  program_.reset();
  desktop_->closeSession();
  desktop_->setApplicationID("");
  startProgram();
  references_.clear();
  reload({keyJ});
  EXPECT_THAT(refusals(), IsEmpty());
  EXPECT_THAT(press("LOGO+j"), ElementsAre(keyJ));
  EXPECT_THAT(desktop_->stored(),
              UnorderedElementsAre(Pair("Quillmar", ElementsAre(Pair("LOGO+j", "LOGO+j"))),
                                   Pair("org.kde.konsoleQuillmar", IsEmpty())));
}

TEST_F(PortalHotKeysTest, OnKdeAClaimedKeyOfAnotherProgramIsRefusedAsTaken) {
  start(Kind::plasma);
  desktop_->take("LOGO+j");
  reload({keyJ, keyK});
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::keyTaken));
  EXPECT_THAT(press("LOGO+k"), ElementsAre(keyK));
}

TEST_F(PortalHotKeysTest, OnKdeAKeyThatTheUserRemovedStaysRemovedAfterARestart) {
  start(Kind::plasma);
  reload({keyJ});
  desktop_->reassign("LOGO+j", "");
  program_.reset();
  desktop_->closeSession();
  startProgram();
  refusals();
  references_.clear();
  reload({keyJ});
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::notGranted));
  EXPECT_THAT(desktop_->stored(), ElementsAre(Pair("Quillmar", ElementsAre(Pair("LOGO+j", "")))));
}

TEST_F(PortalHotKeysTest, OnKdeAKeyThatItsCompositorCannotMatchIsRefused) {
  start(Kind::plasma);
  reload({keypad5, keyK});
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::noSuchKey));
  EXPECT_THAT(press("LOGO+k"), ElementsAre(keyK));
}

TEST_F(PortalHotKeysTest, TheApplicationIdIsRegisteredFirstWherePossible) {
  startDesktop(Kind::documented);
  desktop_->exportRegistry();
  startProgram();
  reload({keyJ});
  EXPECT_THAT(desktop_->takeCalls(), ElementsAre("Register com.tovenworks.quillmar",
                                                 "CreateSession", "BindShortcuts LOGO+j"));
}

TEST_F(PortalHotKeysTest, AModifierOrUnknownKeyIsRefusedAtOnce) {
  startProgram();
  constexpr std::uint32_t leftShift = 56;
  constexpr std::uint32_t unknown = 1000;
  for (const auto keyCode : {leftShift, unknown}) {
    const auto outcome = program_->hotKeys().registerHotKey({.keyCode = keyCode});
    ASSERT_FALSE(outcome.ok());
    EXPECT_EQ(outcome.error(), HotKeyStatus::noSuchKey);
  }
}

TEST_F(PortalHotKeysTest, AKeyThatTheKeyboardLacksIsRefused) {
  start(Kind::documented);
  constexpr std::uint32_t yen = 93;
  reload({yen, keyK});
  EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::noSuchKey));
  EXPECT_THAT(press("LOGO+k"), ElementsAre(keyK));
  // The keymap is known now.
  EXPECT_FALSE(program_->hotKeys().registerHotKey({.keyCode = yen}).ok());
}

TEST_F(PortalHotKeysTest, AHotKeyStaysOnItsPhysicalKeyWhenTheLayoutChanges) {
  WaylandSeat seat("us");
  startDesktop(Kind::plasma);
  startProgram(seat.environment());
  reload({keyQ});
  EXPECT_THAT(press("LOGO+q"), ElementsAre(keyQ));
  desktop_->takeCalls();
  seat.setLayout("fr");
  runMainLoopUntil([&] { return !program_->hotKeys().isSettled(); });
  program_->settle();
  EXPECT_THAT(press("LOGO+q"), IsEmpty());
  EXPECT_THAT(press("LOGO+a"), ElementsAre(keyQ));
  EXPECT_THAT(desktop_->stored(),
              ElementsAre(Pair("Quillmar", ElementsAre(Pair("LOGO+a", "LOGO+a")))));
}

TEST_F(PortalHotKeysTest, AKeyThatTheUserRemovedStaysRemovedWhenTheLayoutChanges) {
  for (const Kind kind : {Kind::documented, Kind::plasma}) {
    WaylandSeat seat("us");
    startDesktop(kind);
    startProgram(seat.environment());
    reload({keyJ, keyK});
    desktop_->reassign("LOGO+j", "");
    refusals();
    desktop_->takeCalls();
    seat.setLayout("fr");
    runMainLoopUntil([&] { return !program_->hotKeys().isSettled(); });
    program_->settle();
    EXPECT_THAT(desktop_->takeCalls(), IsEmpty());
    reload({keyJ, keyK});
    EXPECT_THAT(refusals(), ElementsAre(HotKeyStatus::notGranted));
    EXPECT_THAT(desktop_->takeCalls(), IsEmpty());
  }
}

TEST_F(PortalHotKeysTest, ALayoutWithTheSameSymbolsForTheHotKeysSendsNothing) {
  WaylandSeat seat("us");
  startDesktop(Kind::documented);
  startProgram(seat.environment());
  reload({keyK});
  desktop_->takeCalls();
  seat.setLayout("fr");
  runMainLoopUntil([&] { return !program_->hotKeys().isSettled(); });
  program_->settle();
  EXPECT_THAT(desktop_->takeCalls(), IsEmpty());
}

TEST(PortalHotKeysWithoutABus, RefuseAtOnce) {
  PortalHotKeys hotKeys(Environment{});
  const auto outcome = hotKeys.registerHotKey({.keyCode = keyJ});
  ASSERT_FALSE(outcome.ok());
  EXPECT_EQ(outcome.error(), HotKeyStatus::noService);
}

}  // namespace
}  // namespace quillmar
