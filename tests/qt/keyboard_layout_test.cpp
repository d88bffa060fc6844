// What keys type without modifiers, whatever is held or locked.

#include "platform/qt/windows/keyboard_layout.h"

#include <string>

#include <gtest/gtest.h>

#include "platform/qt/windows/xkb_pointers.h"

namespace quillmar {
namespace {

class KeyboardLayoutTest : public testing::Test {
 protected:
  /// The name of the symbol of an X key code in a layout, such as "us".
  std::string symbol(xkb_keycode_t key, const char* layouts, xkb_layout_index_t layout = 0) const {
    xkb_rule_names names{};
    names.layout = layouts;
    const XkbKeymapPointer keymap(
        xkb_keymap_new_from_names(context_.get(), &names, XKB_KEYMAP_COMPILE_NO_FLAGS));
    char name[64] = "";
    xkb_keysym_get_name(keysymWithoutModifiers(*keymap, key, layout), name, sizeof name);
    return name;
  }

 private:
  XkbContextPointer context_{xkb_context_new(XKB_CONTEXT_NO_FLAGS)};
};

TEST_F(KeyboardLayoutTest, AKeyHasTheSymbolOfItsLayout) {
  EXPECT_EQ(symbol(38, "us"), "a");
  EXPECT_EQ(symbol(38, "fr"), "q");
  EXPECT_EQ(symbol(38, "us,ru", 0), "a");
  EXPECT_EQ(symbol(38, "us,ru", 1), "Cyrillic_ef");
}

TEST_F(KeyboardLayoutTest, AKeyThatTypesDigitsWithShiftOnlyHasItsOtherSymbol) {
  EXPECT_EQ(symbol(11, "us"), "2");
  EXPECT_EQ(symbol(11, "fr"), "eacute");
}

TEST_F(KeyboardLayoutTest, AKeyOfTheKeypadHasItsDigit) {
  EXPECT_EQ(symbol(87, "us"), "KP_1");
  EXPECT_EQ(symbol(91, "us"), "KP_Decimal");
  EXPECT_EQ(symbol(91, "de"), "KP_Separator");
  EXPECT_EQ(symbol(86, "us"), "KP_Add");
  // The keys between the letters and the keypad move the cursor.
  EXPECT_EQ(symbol(115, "us"), "End");
}

TEST_F(KeyboardLayoutTest, ADeadKeyStaysOne) {
  EXPECT_EQ(symbol(34, "fr"), "dead_circumflex");
}

TEST_F(KeyboardLayoutTest, ALayoutThatDoesNotExistIsTheFirstOne) {
  EXPECT_EQ(symbol(38, "fr", 2), "q");
}

}  // namespace
}  // namespace quillmar
