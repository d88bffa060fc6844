// What every login item does. A fixture names the implementation: it is default-constructible,
// gives out `item()`, and changes the item as someone else would:
//   void writeAsSomeoneElse()   an item that starts this program
//   void switchOff()            switches an existing item off
//   void removeProgram()        deletes the program that an existing item starts

#pragma once

#include <gtest/gtest.h>

#include "platform/login_item.h"

namespace quillmar {

template <class Fixture>
class LoginItemConformance : public testing::Test {
 protected:
  LoginItem& item() { return fixture_.item(); }

  void expectRegistered() {
    const Result<void> done = item().registerItem();
    EXPECT_TRUE(done.ok()) << done.error().description;
    EXPECT_EQ(item().status(), LoginItemStatus::enabled);
  }

  Fixture fixture_;
};

TYPED_TEST_SUITE_P(LoginItemConformance);

TYPED_TEST_P(LoginItemConformance, IsNotRegisteredAtFirst) {
  EXPECT_EQ(this->item().status(), LoginItemStatus::notRegistered);
}

TYPED_TEST_P(LoginItemConformance, IsEnabledWhileItIsRegistered) {
  this->expectRegistered();
  EXPECT_TRUE(this->item().unregisterItem().ok());
  EXPECT_EQ(this->item().status(), LoginItemStatus::notRegistered);
}

TYPED_TEST_P(LoginItemConformance, CanBeRegisteredAndUnregisteredTwice) {
  this->expectRegistered();
  this->expectRegistered();
  EXPECT_TRUE(this->item().unregisterItem().ok());
  EXPECT_TRUE(this->item().unregisterItem().ok());
}

TYPED_TEST_P(LoginItemConformance, StaysOffWhenSomeoneHasSwitchedItOff) {
  this->expectRegistered();
  this->fixture_.switchOff();
  EXPECT_EQ(this->item().status(), LoginItemStatus::requiresApproval);
  EXPECT_FALSE(this->item().registerItem().ok());
  EXPECT_EQ(this->item().status(), LoginItemStatus::requiresApproval);
  EXPECT_TRUE(this->item().unregisterItem().ok());
  EXPECT_EQ(this->item().status(), LoginItemStatus::requiresApproval);
}

TYPED_TEST_P(LoginItemConformance, IsRepairedByRegisteringWhenItsProgramIsGone) {
  this->expectRegistered();
  this->fixture_.removeProgram();
  EXPECT_EQ(this->item().status(), LoginItemStatus::notFound);
  this->expectRegistered();
}

TYPED_TEST_P(LoginItemConformance, CanBeUnregisteredWhenItsProgramIsGone) {
  this->expectRegistered();
  this->fixture_.removeProgram();
  EXPECT_TRUE(this->item().unregisterItem().ok());
  EXPECT_EQ(this->item().status(), LoginItemStatus::notRegistered);
}

TYPED_TEST_P(LoginItemConformance, OfSomeoneElseCountsAndIsKept) {
  this->fixture_.writeAsSomeoneElse();
  this->expectRegistered();
  EXPECT_FALSE(this->item().unregisterItem().ok());
  EXPECT_EQ(this->item().status(), LoginItemStatus::enabled);
}

TYPED_TEST_P(LoginItemConformance, OfSomeoneElseIsNotRepaired) {
  this->fixture_.writeAsSomeoneElse();
  this->fixture_.removeProgram();
  EXPECT_EQ(this->item().status(), LoginItemStatus::notFound);
  EXPECT_FALSE(this->item().registerItem().ok());
  EXPECT_TRUE(this->item().unregisterItem().ok());
  EXPECT_EQ(this->item().status(), LoginItemStatus::notFound);
}

REGISTER_TYPED_TEST_SUITE_P(LoginItemConformance, IsNotRegisteredAtFirst,
                            IsEnabledWhileItIsRegistered, CanBeRegisteredAndUnregisteredTwice,
                            StaysOffWhenSomeoneHasSwitchedItOff,
                            IsRepairedByRegisteringWhenItsProgramIsGone,
                            CanBeUnregisteredWhenItsProgramIsGone, OfSomeoneElseCountsAndIsKept,
                            OfSomeoneElseIsNotRepaired);

}  // namespace quillmar
