#include "platform/virtual_key_codes.h"

#include <algorithm>
#include <set>
#include <string_view>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace quillmar {
namespace {

using testing::ElementsAre;

/// Evdev codes of the keys with that virtual key code.
std::vector<int> evdevCodes(int code) {
  std::vector<int> codes;
  for (const VirtualKey& key : virtualKeys()) {
    if (key.code == code) codes.push_back(key.evdevCode);
  }
  return codes;
}

TEST(VirtualKeyCodesTest, AreInOrderAndNoTwoKeysAreTheSameOne) {
  std::set<int> evdev;
  std::set<std::string_view> names;
  int before = 0;
  for (const VirtualKey& key : virtualKeys()) {
    EXPECT_LE(before, key.code);
    before = key.code;
    EXPECT_TRUE(evdev.insert(key.evdevCode).second) << key.code;
    EXPECT_TRUE(names.insert(key.xkbName).second) << key.code;
  }
  EXPECT_EQ(virtualKeys().size(), 121U);
}

TEST(VirtualKeyCodesTest, FunctionKeysHaveTheirCodesAndCharacters) {
  const std::vector<int> codes = {122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                  103, 111, 105, 107, 113, 106, 64, 79,  80,  90};
  for (std::size_t i = 0; i < codes.size(); ++i) {
    const VirtualKey* const key = virtualKeyForKeysym("F" + std::to_string(i + 1));
    ASSERT_NE(key, nullptr) << i;
    EXPECT_EQ(key->code, codes[i]);
    EXPECT_EQ(key->character, 0xf704 + i);
  }
}

TEST(VirtualKeyCodesTest, TheDeleteKeysAreNotMixedUp) {
  EXPECT_THAT(evdevCodes(51), ElementsAre(14));
  EXPECT_EQ(virtualKeyForKeysym("BackSpace")->code, 51);
  EXPECT_THAT(evdevCodes(117), ElementsAre(111));
  EXPECT_EQ(virtualKeyForKeysym("Delete")->code, 117);
}

TEST(VirtualKeyCodesTest, InsertLiesWhereAnotherKeyboardHasHelp) {
  EXPECT_THAT(evdevCodes(114), ElementsAre(138, 110));
  EXPECT_EQ(virtualKeyForEvdevCode(110)->character, U'\uf727');
}

TEST(VirtualKeyCodesTest, OfSeveralKeysWithACharacterTheMainOneIsFound) {
  EXPECT_EQ(virtualKeyForCharacter(U'1')->code, 18);
  EXPECT_EQ(virtualKeyForCharacter(U'\r')->code, 36);
  EXPECT_EQ(virtualKeyForCharacter(U',')->xkbName, "AB08");
}

TEST(VirtualKeyCodesTest, WhatIsNoKeyIsNotFound) {
  EXPECT_EQ(virtualKeyForEvdevCode(0), nullptr);
  EXPECT_EQ(virtualKeyForEvdevCode(65536 + 30), nullptr);
  EXPECT_EQ(virtualKeyForCharacter(0), nullptr);
  EXPECT_EQ(virtualKeyForCharacter(U'ä'), nullptr);
  EXPECT_EQ(virtualKeyForKeysym(""), nullptr);
}

}  // namespace
}  // namespace quillmar
