#include "platform/linux/hot_keys/portal_trigger.h"

#include <cstdint>
#include <optional>
#include <string>

#include <gtest/gtest.h>

#include "platform/hot_keys.h"
#include "platform/linux/hot_keys/key_symbols.h"
#include "tests/virtual_keys.h"

namespace quillmar {
namespace {

using hot_key_modifiers::command;
using hot_key_modifiers::control;
using hot_key_modifiers::option;
using hot_key_modifiers::shift;

std::string trigger(std::uint32_t keyCode, std::uint32_t modifiers, TriggerDialect dialect) {
  static const KeySymbolTable us = keySymbolsOfLayout("us");
  return portalTrigger(us.at(keyCode), modifiers, dialect).value_or("none");
}

std::string documented(std::uint32_t keyCode, std::uint32_t modifiers) {
  return trigger(keyCode, modifiers, TriggerDialect::documented);
}

std::string kde(std::uint32_t keyCode, std::uint32_t modifiers) {
  return trigger(keyCode, modifiers, TriggerDialect::kde);
}

TEST(PortalTrigger, NamesModifiersAndTheKeySymbol) {
  EXPECT_EQ(documented(keyK, command | shift), "SHIFT+LOGO+k");
  EXPECT_EQ(documented(keyK, control | option), "CTRL+ALT+k");
  EXPECT_EQ(documented(keyF5, 0), "F5");
  EXPECT_EQ(documented(keyPageUp, control), "CTRL+Prior");
}

TEST(PortalTrigger, KdeNamesAShiftedCharacterItself) {
  EXPECT_EQ(documented(key2, control | shift), "CTRL+SHIFT+2");
  EXPECT_EQ(kde(key2, control | shift), "CTRL+at");
  EXPECT_EQ(kde(keyK, command | shift), "SHIFT+LOGO+k");
  EXPECT_EQ(kde(keySpace, command | shift), "SHIFT+LOGO+space");
  EXPECT_EQ(kde(keyForwardDelete, shift), "SHIFT+Delete");
}

TEST(PortalTrigger, KdeCannotMatchDeadKeys) {
  const KeySymbols circumflex{"dead_circumflex", ""};
  EXPECT_EQ(portalTrigger(circumflex, control, TriggerDialect::documented), "CTRL+dead_circumflex");
  EXPECT_EQ(portalTrigger(circumflex, control, TriggerDialect::kde), std::nullopt);
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
  EXPECT_EQ(documented(keyF5, control | option), "none");
  EXPECT_EQ(documented(keyF5, control | option | shift), "CTRL+ALT+SHIFT+F5");
}

TEST(PortalTrigger, AKeyWithoutASymbolHasNone) {
  EXPECT_EQ(portalTrigger(KeySymbols{}, command, TriggerDialect::documented), std::nullopt);
}

}  // namespace
}  // namespace quillmar
