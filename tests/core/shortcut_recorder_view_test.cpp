#include "shortcuts/shortcut_recorder_view.h"

#include <memory>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_task_queues.h"
#include "platform/memory/memory_window_system.h"
#include "platform/widgets/button.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/window.h"
#include "tests/key_presses.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

using modifiers::command;
using modifiers::control;
using modifiers::option;
using modifiers::shift;

KeyPress pressed(std::uint16_t keyCode, const std::string& character, std::uint64_t held = 0) {
  return {.keyCode = keyCode, .character = character, .modifiers = held};
}

KeyboardShortcut shortcutOf(std::uint16_t keyCode, const std::string& character,
                            std::uint64_t held = 0) {
  return {.keyCode = keyCode, .character = character, .modifiers = held};
}

const KeyPress keyA = pressed(0, "a");
const KeyPress deleteKey = pressed(51, "\x7f");
const KeyPress forwardDeleteKey = pressed(117, "\uf728");
const KeyPress escapeKey = pressed(53, "\x1b");
const KeyPress superShiftK = pressed(40, "k", command | shift);

class ShortcutRecorderViewTest : public testing::Test {
 protected:
  using Change = std::optional<KeyboardShortcut>;

  ShortcutRecorderViewTest() {
    recorder.setOnChange([this](const Change& shortcut) { changes.push_back(shortcut); });
    EXPECT_TRUE(window.show({}));
  }

  /// Clicks, then presses the keys.
  template <class... Presses>
  void record(const Presses&... presses) {
    recorder.mouseDown();
    (window.key(presses), ...);
  }

  const MemoryWidget& onScreen() const { return *screen.widget(recorder); }
  std::string shownText() const { return std::get<DrawnText>(onScreen().drawing.at(2)).text; }

  MemoryTaskQueue queue;
  MemoryWindowSystem screen{queue};
  Window window{screen};
  StackView& column = window.setContent<StackView>(Orientation::vertical);
  ShortcutRecorderView& recorder = column.add<ShortcutRecorderView>();
  std::vector<Change> changes;
};

// Recording.

TEST_F(ShortcutRecorderViewTest, PressingALetterAloneBeepsAndKeepsRecording) {
  record(keyA);
  EXPECT_EQ(screen.beeps(), 1);
  EXPECT_TRUE(recorder.isRecording());
  EXPECT_EQ(recorder.shortcut(), std::nullopt);
  EXPECT_THAT(changes, IsEmpty());
}

TEST_F(ShortcutRecorderViewTest, PressingALetterWithShiftBeepsAndKeepsRecording) {
  record(pressed(0, "a", shift));
  EXPECT_EQ(screen.beeps(), 1);
  EXPECT_TRUE(recorder.isRecording());
  EXPECT_THAT(changes, IsEmpty());
}

TEST_F(ShortcutRecorderViewTest, PressingF6AloneRecordsItWithItsCharacterAndShowsF6) {
  record(pressed(97, "\uf709"));
  const KeyboardShortcut expected = shortcutOf(97, "\uf709");
  EXPECT_EQ(recorder.shortcut(), expected);
  EXPECT_THAT(changes, ElementsAre(expected));
  EXPECT_FALSE(recorder.isRecording());
  EXPECT_EQ(shownText(), "F6");
  EXPECT_EQ(screen.beeps(), 0);
}

TEST_F(ShortcutRecorderViewTest, PressingDeleteClearsTheShortcutAndReportsItAbsent) {
  for (const KeyPress& key : {deleteKey, forwardDeleteKey}) {
    changes.clear();
    recorder.setShortcut(shortcutOf(40, "k", command));
    record(key);
    EXPECT_EQ(recorder.shortcut(), std::nullopt);
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_THAT(changes, ElementsAre(std::nullopt));
    EXPECT_EQ(shownText(), "Click to record");
  }
}

TEST_F(ShortcutRecorderViewTest, PressingEscapeLeavesTheShortcutAsItWas) {
  const KeyboardShortcut before = shortcutOf(40, "k", command);
  recorder.setShortcut(before);
  record(escapeKey);
  EXPECT_EQ(recorder.shortcut(), before);
  EXPECT_FALSE(recorder.isRecording());
  EXPECT_THAT(changes, IsEmpty());
  EXPECT_EQ(shownText(), "⌘K");
}

TEST_F(ShortcutRecorderViewTest, RecordingOverAShortcutThatIsNotGlobalKeepsItNotGlobal) {
  KeyboardShortcut before = shortcutOf(40, "k", command);
  before.isGlobal = false;
  recorder.setShortcut(before);
  record(pressed(35, "p", option | command));
  KeyboardShortcut expected = shortcutOf(35, "p", option | command);
  expected.isGlobal = false;
  EXPECT_EQ(recorder.shortcut(), expected);
  EXPECT_THAT(changes, ElementsAre(expected));
}

TEST_F(ShortcutRecorderViewTest, ClickingTheControlWhileItRecordsStopsWithoutAChange) {
  const KeyboardShortcut before = shortcutOf(40, "k", command);
  recorder.setShortcut(before);
  recorder.mouseDown();
  EXPECT_TRUE(recorder.isRecording());
  recorder.mouseDown();
  EXPECT_FALSE(recorder.isRecording());
  EXPECT_EQ(recorder.shortcut(), before);
  EXPECT_THAT(changes, IsEmpty());
}

TEST_F(ShortcutRecorderViewTest, AFirstRecordingIsGlobal) {
  record(superShiftK);
  EXPECT_THAT(changes, ElementsAre(shortcutOf(40, "k", command | shift)));
  EXPECT_TRUE(recorder.shortcut()->isGlobal);
}

TEST_F(ShortcutRecorderViewTest, AfterABeepTheNextCombinationIsRecorded) {
  record(keyA, superShiftK);
  EXPECT_EQ(screen.beeps(), 1);
  EXPECT_EQ(recorder.shortcut(), shortcutOf(40, "k", command | shift));
}

TEST_F(ShortcutRecorderViewTest, ControlOptionAndCommandEachSuffice) {
  for (const std::uint64_t held : {control, option, command}) {
    record(pressed(0, "a", held));
    EXPECT_EQ(recorder.shortcut(), shortcutOf(0, "a", held));
  }
  EXPECT_EQ(screen.beeps(), 0);
}

TEST_F(ShortcutRecorderViewTest, DeleteAndEscapeWithAModifierAreShortcuts) {
  for (KeyPress press : {deleteKey, forwardDeleteKey, escapeKey}) {
    press.modifiers = command;
    record(press);
    EXPECT_EQ(recorder.shortcut(), shortcutOf(*press.keyCode, press.character, command));
  }
}

TEST_F(ShortcutRecorderViewTest, DeleteAndEscapeWithShiftAloneBeep) {
  recorder.setShortcut(shortcutOf(40, "k", command));
  recorder.mouseDown();
  for (KeyPress press : {deleteKey, forwardDeleteKey, escapeKey}) {
    press.modifiers = shift;
    window.key(press);
    EXPECT_TRUE(recorder.isRecording());
  }
  EXPECT_EQ(screen.beeps(), 3);
  EXPECT_THAT(changes, IsEmpty());
}

TEST_F(ShortcutRecorderViewTest, EachFunctionKeyIsRecordedAlone) {
  for (const std::uint16_t code : {122, 120, 99,  118, 96,  97,  98, 100, 101, 109,
                                   103, 111, 105, 107, 113, 106, 64, 79,  80,  90}) {
    record(pressed(code, ""));
    EXPECT_EQ(recorder.shortcut(), shortcutOf(code, ""));
  }
  EXPECT_EQ(ShortcutRecorderView::functionKeyCodes().size(), 20U);
}

TEST_F(ShortcutRecorderViewTest, TheCharacterIsStoredInLowerCaseByTheFullRules) {
  record(pressed(0, "Ö", control));
  EXPECT_EQ(recorder.shortcut()->character, "ö");
  record(pressed(0, "İ", control));
  EXPECT_EQ(recorder.shortcut()->character, "i\u0307");
}

TEST_F(ShortcutRecorderViewTest, OtherModifierBitsAreNotStored) {
  record(pressed(40, "k", command | 0x10000 | 0x200000 | 0x1));
  EXPECT_EQ(recorder.shortcut(), shortcutOf(40, "k", command));
}

TEST_F(ShortcutRecorderViewTest, AKeyWithoutAVirtualKeyCodeBeeps) {
  record(KeyPress{.keyCode = {}, .character = "a", .modifiers = command});
  EXPECT_EQ(screen.beeps(), 1);
  EXPECT_TRUE(recorder.isRecording());
}

TEST_F(ShortcutRecorderViewTest, AChangeByTheProgramIsShownAndNotReported) {
  recorder.setShortcut(shortcutOf(40, "k", command));
  EXPECT_EQ(shownText(), "⌘K");
  recorder.setShortcut({});
  EXPECT_EQ(shownText(), "Click to record");
  EXPECT_THAT(changes, IsEmpty());
}

TEST_F(ShortcutRecorderViewTest, TheHandlerMayDestroyTheControl) {
  recorder.setOnChange([this](const Change&) { column.remove(recorder); });
  record(superShiftK);
  EXPECT_THAT(column.subviews(), IsEmpty());
}

// Keys and the focus.

TEST_F(ShortcutRecorderViewTest, WhileRecordingCombinationsReachTheControlBeforeButtonsAndTab) {
  bool isPressed = false;
  Button& button = column.add<Button>("Save");
  button.setKeyEquivalent(KeyEquivalent{.character = "\r", .modifierMask = command});
  button.setOnPress([&] { isPressed = true; });
  record(pressed(36, "\r", command));
  EXPECT_EQ(recorder.shortcut(), shortcutOf(36, "\r", command));
  record(pressed(48, "\t", control));
  EXPECT_EQ(recorder.shortcut(), shortcutOf(48, "\t", control));
  EXPECT_FALSE(isPressed);
  // Afterwards the button has its key again.
  window.key(pressed(36, "\r", command));
  EXPECT_TRUE(isPressed);
}

TEST_F(ShortcutRecorderViewTest, WithoutRecordingKeysDoWhatTheyUsuallyDo) {
  int presses = 0;
  Button& button = column.add<Button>("Save");
  button.setKeyEquivalent(keys::returnKey);
  button.setOnPress([&] { ++presses; });
  window.makeFirstResponder(&recorder);
  EXPECT_FALSE(window.key(keyA));
  EXPECT_TRUE(window.key(pressOf(keys::returnKey)));
  EXPECT_EQ(presses, 1);
  window.key(pressOf(keys::tab));
  EXPECT_EQ(window.firstResponder(), &button);
  EXPECT_EQ(screen.beeps(), 0);
}

TEST_F(ShortcutRecorderViewTest, AClickMakesTheControlTheFirstResponder) {
  auto& field = column.add<TextField>();
  window.makeFirstResponder(&field);
  recorder.mouseDown();
  EXPECT_EQ(window.firstResponder(), &recorder);
  EXPECT_TRUE(recorder.isRecording());
}

TEST_F(ShortcutRecorderViewTest, LosingTheFocusStopsTheRecordingWithoutAChange) {
  auto& field = column.add<TextField>();
  const KeyboardShortcut before = shortcutOf(40, "k", command);
  recorder.setShortcut(before);
  const auto recordUntil = [&](auto&& lose) {
    recorder.mouseDown();
    EXPECT_TRUE(recorder.isRecording());
    lose();
    EXPECT_FALSE(recorder.isRecording());
    EXPECT_EQ(shownText(), "⌘K");
  };
  recordUntil([&] { window.focus(&field); });
  recordUntil([&] { window.mouseDown(); });
  recordUntil([&] { window.keyboardLost(); });
  recordUntil([&] { recorder.setEnabled(false); });
  recorder.setEnabled(true);
  recordUntil([&] { window.close(); });
  EXPECT_THAT(changes, IsEmpty());
}

TEST_F(ShortcutRecorderViewTest, OnlyOneControlRecordsAtATime) {
  auto& other = column.add<ShortcutRecorderView>();
  recorder.mouseDown();
  other.mouseDown();
  EXPECT_FALSE(recorder.isRecording());
  EXPECT_TRUE(other.isRecording());
  window.key(superShiftK);
  EXPECT_EQ(recorder.shortcut(), std::nullopt);
  EXPECT_EQ(other.shortcut(), shortcutOf(40, "k", command | shift));
}

TEST_F(ShortcutRecorderViewTest, TheKeyboardIsCapturedWhileTheControlRecords) {
  EXPECT_FALSE(onScreen().capturesKeyboard);
  recorder.mouseDown();
  EXPECT_TRUE(onScreen().capturesKeyboard);
  window.key(keyA);
  EXPECT_TRUE(onScreen().capturesKeyboard);
  window.key(superShiftK);
  EXPECT_FALSE(onScreen().capturesKeyboard);
}

TEST_F(ShortcutRecorderViewTest, ADisabledControlDoesNotRecord) {
  recorder.setEnabled(false);
  recorder.mouseDown();
  EXPECT_FALSE(recorder.isRecording());
}

// The text of a shortcut.

struct Display {
  KeyboardShortcut shortcut;
  const char* text;
};

class ShortcutDisplayTest : public testing::TestWithParam<Display> {};

TEST_P(ShortcutDisplayTest, AShortcutIsWrittenAsModifiersAndKey) {
  EXPECT_EQ(ShortcutRecorderView::displayString(GetParam().shortcut), GetParam().text);
}

INSTANTIATE_TEST_SUITE_P(
    Shortcuts, ShortcutDisplayTest,
    testing::Values(
        Display{shortcutOf(40, "k", command | shift), "⇧⌘K"},
        Display{shortcutOf(49, " ", control | option), "⌃⌥Space"},
        Display{shortcutOf(96, "\uf708"), "F5"},
        Display{shortcutOf(0, "a", control | option | shift | command), "⌃⌥⇧⌘A"},
        Display{shortcutOf(51, "\x7f", command), "⌘⌫"},
        Display{shortcutOf(27, "ß", control), "⌃SS"}, Display{shortcutOf(0, "ф", option), "⌥Ф"},
        Display{shortcutOf(18, "&", command), "⌘&"}, Display{shortcutOf(83, "1", command), "⌘1"},
        Display{shortcutOf(0, "", command), "⌘"}, Display{shortcutOf(0, "a", 0x10000), "A"}));

TEST(ShortcutNamesTest, AKeyEquivalentIsWrittenAsAShortcutIs) {
  const auto textOf = [](const std::string& character, std::uint64_t mask) {
    return ShortcutRecorderView::displayString(
        KeyEquivalent{.character = character, .modifierMask = mask});
  };
  EXPECT_EQ(textOf("k", command | shift), "⇧⌘K");
  EXPECT_EQ(textOf(",", command), "⌘,");
  EXPECT_EQ(textOf(" ", control | option), "⌃⌥Space");
  EXPECT_EQ(textOf("\r", 0), "↩");
  EXPECT_EQ(textOf("\uf708", 0), "F5");
  EXPECT_EQ(textOf("é", control), "⌃É");
  EXPECT_EQ(textOf("", command), "");
}

TEST(ShortcutNamesTest, SpecialKeysHaveTheirNames) {
  const std::map<std::uint16_t, std::string> expected = {
      {36, "↩"},    {48, "⇥"},    {49, "Space"}, {51, "⌫"},    {117, "⌦"},   {53, "⎋"},
      {123, "←"},   {124, "→"},   {126, "↑"},    {125, "↓"},   {115, "↖"},   {119, "↘"},
      {116, "⇞"},   {121, "⇟"},   {122, "F1"},   {120, "F2"},  {99, "F3"},   {118, "F4"},
      {96, "F5"},   {97, "F6"},   {98, "F7"},    {100, "F8"},  {101, "F9"},  {109, "F10"},
      {103, "F11"}, {111, "F12"}, {105, "F13"},  {107, "F14"}, {113, "F15"}, {106, "F16"},
      {64, "F17"},  {79, "F18"},  {80, "F19"},   {90, "F20"}};
  EXPECT_EQ(ShortcutRecorderView::specialKeyNames(), expected);
}

// What is shown.

TEST_F(ShortcutRecorderViewTest, TheControlIs180By24PixelsLarge) {
  EXPECT_EQ(recorder.naturalSize(), (Size{.width = 180, .height = 24}));
}

class ShortcutRecorderDrawingTest : public ShortcutRecorderViewTest {
 protected:
  /// What the control draws at its natural size.
  static Drawing drawing(const Paint& fill, CanvasColor stroke, const std::string& text,
                         CanvasColor textColor) {
    const RoundedRect shape{
        .rect = {.origin = {.x = 0.5, .y = 0.5}, .size = {.width = 179, .height = 23}},
        .radius = 5};
    const Font font = Font::system(12);
    const Size size = MemoryCanvas::sizeOf(text, font);
    const Point origin{.x = (180 - size.width) / 2, .y = (24 - size.height) / 2};
    return {FilledShape{.shape = shape, .paint = fill},
            StrokedShape{.shape = shape, .paint = {.color = stroke}, .lineWidth = 1},
            DrawnText{.text = text, .origin = origin, .font = font, .paint = {.color = textColor}}};
  }

  static Drawing idleDrawing(const std::string& text, CanvasColor textColor) {
    return drawing({.color = CanvasColor::controlBackground}, CanvasColor::separator, text,
                   textColor);
  }
};

TEST_F(ShortcutRecorderDrawingTest, WithoutAShortcutItInvitesToRecordInTheTertiaryColour) {
  EXPECT_EQ(onScreen().drawing, idleDrawing("Click to record", CanvasColor::tertiaryLabel));
}

TEST_F(ShortcutRecorderDrawingTest, AShortcutIsDrawnInTheLabelColour) {
  recorder.setShortcut(shortcutOf(40, "k", command | shift));
  EXPECT_EQ(onScreen().drawing, idleDrawing("⇧⌘K", CanvasColor::label));
}

TEST_F(ShortcutRecorderDrawingTest, WhileRecordingItIsTintedAndAsksForAShortcut) {
  recorder.setShortcut(shortcutOf(40, "k", command | shift));
  recorder.mouseDown();
  EXPECT_EQ(onScreen().drawing,
            drawing({.color = CanvasColor::selectedControl, .alpha = 0.25}, CanvasColor::accent,
                    "Type shortcut…", CanvasColor::secondaryLabel));
}

TEST_F(ShortcutRecorderDrawingTest, TheDrawingFillsALargerControl) {
  recorder.setWidth(300);
  recorder.setHeight(40);
  const auto& shape = std::get<FilledShape>(onScreen().drawing.at(0)).shape;
  EXPECT_EQ(shape.rect.size, (Size{.width = 299, .height = 39}));
}

TEST_F(ShortcutRecorderViewTest, AControlCharacterIsShownAsItsNumberOnScreenAndToScreenReaders) {
  const KeyboardShortcut keypadEnter = shortcutOf(76, "\r", command);
  recorder.setShortcut(keypadEnter);
  EXPECT_EQ(shownText(), "⌘‹U+000D›");
  EXPECT_EQ(onScreen().accessibilityValue, "⌘‹U+000D›");
  EXPECT_EQ(ShortcutRecorderView::displayString(keypadEnter), "⌘\r");
}

// Screen readers.

TEST_F(ShortcutRecorderViewTest, ScreenReadersAreToldTheRoleTheNameTheShortcutAndTheRecording) {
  EXPECT_EQ(onScreen().accessibilityRole, AccessibilityRole::button);
  EXPECT_EQ(onScreen().accessibilityLabel, "Keyboard shortcut");
  EXPECT_EQ(onScreen().accessibilityValue, "Click to record");
  EXPECT_FALSE(onScreen().accessibilityPressed);
  recorder.mouseDown();
  EXPECT_EQ(onScreen().accessibilityValue, "Type shortcut…");
  EXPECT_TRUE(onScreen().accessibilityPressed);
  window.key(superShiftK);
  EXPECT_EQ(onScreen().accessibilityValue, "⇧⌘K");
  EXPECT_FALSE(onScreen().accessibilityPressed);
}

}  // namespace
}  // namespace quillmar
