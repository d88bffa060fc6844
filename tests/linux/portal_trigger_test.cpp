#include "platform/linux/hot_keys/portal_trigger.h"

#include <map>
#include <set>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/hot_keys.h"
#include "platform/virtual_key_codes.h"

namespace quillmar {
namespace {

using hotKeyModifiers::command;
using hotKeyModifiers::control;
using hotKeyModifiers::option;
using hotKeyModifiers::shift;
using testing::IsEmpty;

constexpr std::uint32_t keyK = 40;
constexpr std::uint32_t key2 = 19;
constexpr std::uint32_t space = 49;
constexpr std::uint32_t forwardDelete = 117;
constexpr std::uint32_t f5 = 96;
constexpr std::uint32_t f13 = 105;
constexpr std::uint32_t keypad5 = 87;
constexpr std::uint32_t keypadPlus = 69;
constexpr std::uint32_t keypadEnter = 76;
constexpr std::uint32_t help = 114;
constexpr std::uint32_t pageUp = 116;

std::string documented(std::uint32_t keyCode, std::uint32_t modifiers) {
  return portalTrigger({keyCode, modifiers}, TriggerDialect::documented).value_or("none");
}

std::string kde(std::uint32_t keyCode, std::uint32_t modifiers) {
  return portalTrigger({keyCode, modifiers}, TriggerDialect::kde).value_or("none");
}

TEST(PortalTrigger, NamesModifiersAndTheKeySymbol) {
  EXPECT_EQ(documented(keyK, command | shift), "SHIFT+LOGO+k");
  EXPECT_EQ(documented(keyK, control | option), "CTRL+ALT+k");
  EXPECT_EQ(documented(f5, 0), "F5");
  EXPECT_EQ(documented(pageUp, control), "CTRL+Page_Up");
}

TEST(PortalTrigger, KeysOfAppleKeyboardsHaveTheSymbolsOfTheSameKeysOnPcKeyboards) {
  EXPECT_EQ(documented(f13, command), "LOGO+XF86Tools");
  EXPECT_EQ(documented(help, command), "LOGO+Insert");
}

TEST(PortalTrigger, KdeNamesAShiftedCharacterItself) {
  EXPECT_EQ(documented(key2, control | shift), "CTRL+SHIFT+2");
  EXPECT_EQ(kde(key2, control | shift), "CTRL+at");
  EXPECT_EQ(kde(keyK, command | shift), "SHIFT+LOGO+k");
  EXPECT_EQ(kde(space, command | shift), "SHIFT+LOGO+space");
  EXPECT_EQ(kde(forwardDelete, shift), "SHIFT+Delete");
}

TEST(PortalTrigger, KdeCannotMatchMostKeypadKeys) {
  EXPECT_EQ(documented(keypad5, control), "CTRL+KP_5");
  EXPECT_EQ(kde(keypad5, control), "none");
  EXPECT_EQ(kde(keypad5, control | shift), "none");
  EXPECT_EQ(kde(keypadPlus, control), "none");
  EXPECT_EQ(kde(keypadPlus, control | shift), "CTRL+SHIFT+KP_Add");
  EXPECT_EQ(kde(keypadEnter, control), "CTRL+KP_Enter");
}

TEST(PortalTrigger, KeysOfVirtualConsolesHaveNone) {
  EXPECT_EQ(documented(f5, control | option), "none");
  EXPECT_EQ(documented(f5, control | option | shift), "CTRL+ALT+SHIFT+F5");
}

TEST(PortalTrigger, OfAllKeysOnlyModifiersAndUnknownSymbolsHaveNone) {
  std::set<std::string> without;
  std::map<std::string, std::string> keys;
  for (const VirtualKey& key : virtualKeys()) {
    const std::string name(key.keysym.empty() ? key.xkbName : key.keysym);
    const auto trigger = portalTrigger({key.code, command}, TriggerDialect::documented);
    if (!trigger) {
      without.insert(name);
    } else if (name != "Insert") {
      // Insert has the code of Help.
      EXPECT_TRUE(keys.emplace(*trigger, name).second) << name << " and " << keys[*trigger];
    }
  }
  EXPECT_THAT(without,
              testing::UnorderedElementsAre("Alt_L", "Alt_R", "Caps_Lock", "Control_L", "Control_R",
                                            "F19", "I472", "KP_Separator", "Shift_L", "Shift_R",
                                            "Super_L", "Super_R", "underscore", "yen"));
  EXPECT_EQ(documented(1000, command), "none");
}

}  // namespace
}  // namespace quillmar
