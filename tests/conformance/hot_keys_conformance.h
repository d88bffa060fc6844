// What every HotKeys does. A backend is a default-constructible type with
//   HotKeys& hotKeys();
//   void press(std::uint32_t keyCode, std::uint32_t modifiers);
//                                         presses and releases the keys while another program has
//                                         the keyboard
//   void hold(std::uint32_t keyCode, std::uint32_t modifiers);
//                                         presses the keys until the key has repeated, and releases
//                                         them
//   void setLocks(bool capsLock, bool numLock);
//                                         sets the lock modifiers of the next presses; does nothing
//                                         where they cannot be pressed
//   bool takeByOtherProgram(std::uint32_t keyCode, std::uint32_t modifiers);
//                                         another program registers the combination; false if it
//                                         is taken
//   void releaseByOtherPrograms();        the other programs unregister all of theirs
//   void settle();                        waits until the desktop has processed all registrations
//                                         and unregistrations, and reports what it refused
//   bool runUntil(std::function<bool()> done);
//                                         runs the main thread's tasks; false if `done` remains
//                                         false for some seconds
//
// Key codes and modifiers are those of HotKeyRequest. The suite uses letters with Command and Shift
// only, which the backend must be able to press.

#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/hot_keys.h"
#include "tests/virtual_keys.h"

namespace quillmar {

template <class Backend>
class HotKeysConformance : public testing::Test {
 protected:
  struct Refusal {
    HotKeyReference reference;
    HotKeyStatus status;

    bool operator==(const Refusal&) const = default;
  };

  static constexpr std::uint32_t commandShift =
      hot_key_modifiers::command | hot_key_modifiers::shift;

  HotKeysConformance() {
    hotKeys().installEventHandlers({
        .pressed =
            [this](HotKeyID id, const Activation& /*activation*/) {
              EXPECT_FALSE(isInCall_) << "A press was reported during a call.";
              EXPECT_EQ(id.signature, signature);
              pressed_.push_back(id.id);
              if (onPressed_) onPressed_();
            },
        .refused =
            [this](HotKeyReference reference, HotKeyStatus status) {
              EXPECT_FALSE(isInCall_) << "A refusal was reported during a call.";
              refused_.push_back({reference, status});
            },
    });
  }
  // The backend may report events until it is destroyed.
  ~HotKeysConformance() override { hotKeys().installEventHandlers({}); }

  HotKeys& hotKeys() { return backend_.hotKeys(); }

  Result<HotKeyReference, HotKeyStatus> tryRegister(std::uint32_t id, std::uint32_t keyCode,
                                                    std::uint32_t modifiers = commandShift) {
    isInCall_ = true;
    auto outcome = hotKeys().registerHotKey({.keyCode = keyCode,
                                             .modifiers = modifiers,
                                             .id = {signature, id},
                                             .description = "Hot key " + std::to_string(id)});
    isInCall_ = false;
    return outcome;
  }

  /// Registers a combination that is free, and waits until it works.
  HotKeyReference add(std::uint32_t id, std::uint32_t keyCode,
                      std::uint32_t modifiers = commandShift) {
    const auto reference = tryRegister(id, keyCode, modifiers);
    EXPECT_EQ(statusOf(reference), std::nullopt);
    backend_.settle();
    EXPECT_THAT(refused_, testing::IsEmpty());
    return reference ? reference.value() : HotKeyReference{};
  }

  void remove(HotKeyReference reference) {
    isInCall_ = true;
    hotKeys().unregisterHotKey(reference);
    isInCall_ = false;
    backend_.settle();
  }

  /// The status with which the combination is refused, at once or later.
  std::optional<HotKeyStatus> refusalOf(std::uint32_t id, std::uint32_t keyCode) {
    const auto outcome = tryRegister(id, keyCode);
    if (!outcome) return outcome.error();
    EXPECT_TRUE(backend_.runUntil([&] { return !refused_.empty(); })) << "It was not refused.";
    if (refused_.empty()) return std::nullopt;
    const Refusal refusal = refused_.front();
    EXPECT_EQ(refusal.reference, outcome.value());
    refused_.clear();
    return refusal.status;
  }

  void press(std::uint32_t keyCode, std::uint32_t modifiers = commandShift) {
    backend_.press(keyCode, modifiers);
  }

  /// The ids that were reported, once there are `count` of them.
  std::vector<std::uint32_t> pressed(std::size_t count) {
    EXPECT_TRUE(backend_.runUntil([&] { return pressed_.size() >= count; }));
    return std::exchange(pressed_, {});
  }

  static std::optional<HotKeyStatus> statusOf(const Result<HotKeyReference, HotKeyStatus>& result) {
    if (result) return std::nullopt;
    return result.error();
  }

  static constexpr std::uint32_t signature = 0x01020304;

  Backend backend_;
  std::function<void()> onPressed_;
  std::vector<std::uint32_t> pressed_;
  std::vector<Refusal> refused_;

 private:
  bool isInCall_ = false;
};

TYPED_TEST_SUITE_P(HotKeysConformance);

TYPED_TEST_P(HotKeysConformance, EachPressIsReportedOnceWithTheIdOfItsHotKey) {
  this->add(7, keyJ);
  this->add(8, keyK);
  this->press(keyJ);
  this->press(keyK);
  this->press(keyK);
  this->press(keyJ);
  EXPECT_THAT(this->pressed(4), testing::ElementsAre(7, 8, 8, 7));
}

TYPED_TEST_P(HotKeysConformance, AKeyThatIsHeldDownIsReportedOnce) {
  this->add(1, keyJ);
  this->add(2, keyK);
  this->backend_.hold(keyJ, this->commandShift);
  this->press(keyK);
  EXPECT_THAT(this->pressed(2), testing::ElementsAre(1, 2));
}

TYPED_TEST_P(HotKeysConformance, OnlyTheExactModifiersMatch) {
  this->add(1, keyJ, this->commandShift);
  this->add(2, keyJ, hot_key_modifiers::command);
  this->add(3, keyK, this->commandShift);
  this->press(keyJ, hot_key_modifiers::command);
  this->press(keyK, hot_key_modifiers::command);
  this->press(keyJ, this->commandShift);
  EXPECT_THAT(this->pressed(2), testing::ElementsAre(2, 1));
}

TYPED_TEST_P(HotKeysConformance, LockModifiersDoNotMatter) {
  this->add(1, keyJ);
  for (const bool capsLock : {false, true}) {
    for (const bool numLock : {false, true}) {
      this->backend_.setLocks(capsLock, numLock);
      this->press(keyJ);
      EXPECT_THAT(this->pressed(1), testing::ElementsAre(1))
          << "CapsLock " << capsLock << ", NumLock " << numLock;
    }
  }
  this->backend_.setLocks(false, false);
}

TYPED_TEST_P(HotKeysConformance, TwoHotKeysCannotHaveTheSameCombination) {
  this->add(1, keyJ);
  EXPECT_EQ(this->statusOf(this->tryRegister(2, keyJ)), HotKeyStatus::keyTaken);
  this->press(keyJ);
  EXPECT_THAT(this->pressed(1), testing::ElementsAre(1));
}

TYPED_TEST_P(HotKeysConformance, ACombinationIsFreeAfterItIsUnregistered) {
  const HotKeyReference first = this->add(1, keyJ);
  this->add(2, keyK);
  this->remove(first);
  this->press(keyJ);
  this->press(keyK);
  EXPECT_THAT(this->pressed(1), testing::ElementsAre(2));
  EXPECT_TRUE(this->backend_.takeByOtherProgram(keyJ, this->commandShift));
}

TYPED_TEST_P(HotKeysConformance, AnUnregisteredCombinationCanBeRegisteredAgain) {
  this->remove(this->add(1, keyJ));
  this->add(2, keyJ);
  this->press(keyJ);
  EXPECT_THAT(this->pressed(1), testing::ElementsAre(2));
}

TYPED_TEST_P(HotKeysConformance, UnregisteringAnUnknownReferenceDoesNothing) {
  const HotKeyReference known = this->add(1, keyJ);
  this->add(2, keyK);
  this->remove(HotKeyReference{0xFFFF'FFFF'FFFF});
  this->remove(known);
  this->remove(known);
  this->press(keyK);
  EXPECT_THAT(this->pressed(1), testing::ElementsAre(2));
}

TYPED_TEST_P(HotKeysConformance, ACombinationOfAnotherProgramIsRefusedAndTheOthersWork) {
  ASSERT_TRUE(this->backend_.takeByOtherProgram(keyJ, this->commandShift));
  this->add(1, keyK);
  EXPECT_EQ(this->refusalOf(2, keyJ), HotKeyStatus::keyTaken);
  this->add(3, keyN);
  this->press(keyJ);
  this->press(keyK);
  this->press(keyN);
  EXPECT_THAT(this->pressed(2), testing::ElementsAre(1, 3));
}

TYPED_TEST_P(HotKeysConformance, ARefusedCombinationCanBeRegisteredOnceItIsFree) {
  ASSERT_TRUE(this->backend_.takeByOtherProgram(keyJ, this->commandShift));
  EXPECT_EQ(this->refusalOf(1, keyJ), HotKeyStatus::keyTaken);
  this->backend_.releaseByOtherPrograms();
  this->add(2, keyJ);
  this->press(keyJ);
  EXPECT_THAT(this->pressed(1), testing::ElementsAre(2));
}

TYPED_TEST_P(HotKeysConformance, NothingIsReportedDuringACall) {
  const HotKeyReference other = this->add(1, keyJ);
  this->add(2, keyK);
  this->press(keyK);
  // The handlers fail the test if they run inside one of these calls.
  ASSERT_TRUE(this->tryRegister(3, keyN).ok());
  EXPECT_EQ(this->statusOf(this->tryRegister(4, keyN)), HotKeyStatus::keyTaken);
  this->remove(other);
  EXPECT_THAT(this->pressed(1), testing::ElementsAre(2));
}

TYPED_TEST_P(HotKeysConformance, AHandlerMayUnregisterItsOwnHotKey) {
  const HotKeyReference own = this->add(1, keyJ);
  this->add(2, keyK);
  this->onPressed_ = [&] { this->hotKeys().unregisterHotKey(own); };
  this->press(keyJ);
  EXPECT_THAT(this->pressed(1), testing::ElementsAre(1));
  this->backend_.settle();
  this->press(keyJ);
  this->press(keyK);
  EXPECT_THAT(this->pressed(1), testing::ElementsAre(2));
}

REGISTER_TYPED_TEST_SUITE_P(HotKeysConformance, EachPressIsReportedOnceWithTheIdOfItsHotKey,
                            AKeyThatIsHeldDownIsReportedOnce, OnlyTheExactModifiersMatch,
                            LockModifiersDoNotMatter, TwoHotKeysCannotHaveTheSameCombination,
                            ACombinationIsFreeAfterItIsUnregistered,
                            AnUnregisteredCombinationCanBeRegisteredAgain,
                            UnregisteringAnUnknownReferenceDoesNothing,
                            ACombinationOfAnotherProgramIsRefusedAndTheOthersWork,
                            ARefusedCombinationCanBeRegisteredOnceItIsFree,
                            NothingIsReportedDuringACall, AHandlerMayUnregisterItsOwnHotKey);

}  // namespace quillmar
