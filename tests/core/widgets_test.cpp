// What widgets do by themselves, whatever shows them; what they do together with a screen is in
// tests/conformance/widgets_*_conformance.h.

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_task_queues.h"
#include "platform/memory/memory_window_system.h"
#include "platform/widgets/button.h"
#include "platform/widgets/label.h"
#include "platform/widgets/scroll_view.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/view_peer.h"
#include "platform/widgets/window.h"
#include "tests/key_presses.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

struct News {
  int viewChanged = 0;
  int subviewsChanged = 0;
};

class CountingPeer final : public ViewPeer {
 public:
  explicit CountingPeer(News& news) : news_(news) {}

  void viewChanged() override { ++news_.viewChanged; }
  void subviewsChanged() override { ++news_.subviewsChanged; }

 private:
  News& news_;
};

class WidgetsTest : public testing::Test {
 protected:
  Button& addButton(const std::string& title) {
    auto& button = column.add<Button>(title);
    button.setOnPress([this, title] { pressed.push_back(title); });
    return button;
  }

  MemoryTaskQueue queue;
  MemoryWindowSystem screen{queue};
  std::vector<std::string> pressed;
  Window window{screen};
  StackView& column = window.setContent<StackView>(Orientation::vertical);
};

// The tree.

TEST_F(WidgetsTest, AViewKnowsWhereItLies) {
  auto content = std::make_unique<StackView>(Orientation::horizontal);
  auto& label = content->add<Label>("Text");
  EXPECT_EQ(label.window(), nullptr);
  auto& scroll = column.add<ScrollView>(std::move(content));
  EXPECT_EQ(label.superview(), &scroll.content());
  EXPECT_EQ(scroll.content().superview(), &scroll);
  EXPECT_EQ(scroll.superview(), &column);
  EXPECT_EQ(column.superview(), nullptr);
  EXPECT_EQ(label.window(), &window);
}

TEST_F(WidgetsTest, AViewMayHaveASpacingOfItsOwn) {
  column.setSpacing(10);
  auto& label = column.add<Label>("Text");
  EXPECT_EQ(column.spacingAfter(label), 10);
  column.setCustomSpacing(4, label);
  column.setSpacing(12);
  EXPECT_EQ(column.spacingAfter(label), 4);
  EXPECT_EQ(column.spacingAfter(addButton("Other")), 12);
}

TEST_F(WidgetsTest, AStackRemovesOnlyItsOwnViews) {
  auto& row = column.add<StackView>(Orientation::horizontal);
  auto& label = row.add<Label>("Text");
  column.remove(label);
  EXPECT_THAT(row.subviews(), ElementsAre(&label));
  EXPECT_THAT(column.subviews(), ElementsAre(&row));
}

TEST_F(WidgetsTest, PeersHearOnlyOfWhatChanges) {
  News news;
  auto& button = addButton("Title");
  button.setPeer(std::make_unique<CountingPeer>(news));
  button.setTitle("Title");
  button.setEnabled(true);
  button.setWidth(std::nullopt);
  EXPECT_EQ(news.viewChanged, 0);
  button.setTitle("Other");
  button.setWidth(100);
  button.setKeyEquivalent(keys::returnKey);
  EXPECT_EQ(news.viewChanged, 3);
  EXPECT_THAT(pressed, IsEmpty());
}

TEST_F(WidgetsTest, TheStacksPeerHearsOfViewsThatComeAndGo) {
  News news;
  column.setPeer(std::make_unique<CountingPeer>(news));
  auto& label = column.add<Label>("Text");
  EXPECT_EQ(news.subviewsChanged, 1);
  column.setCustomSpacing(4, label);
  EXPECT_EQ(news.viewChanged, 1);
  column.remove(label);
  EXPECT_EQ(news.subviewsChanged, 2);
}

// What the user can do.

TEST_F(WidgetsTest, AWindowThatIsNotOpenTakesNoInput) {
  auto& button = addButton("Button");
  button.setKeyEquivalent(keys::returnKey);
  auto& field = column.add<TextField>();
  const auto tryAll = [&] {
    button.press();
    field.type("typed");
    EXPECT_FALSE(window.key(pressOf(keys::returnKey)));
    EXPECT_FALSE(window.key(pressOf(keys::tab)));
    window.performClose();
  };
  tryAll();
  ASSERT_TRUE(window.show({}));
  window.close();
  tryAll();
  EXPECT_THAT(pressed, IsEmpty());
  EXPECT_EQ(field.text(), "");
}

TEST_F(WidgetsTest, WhatLiesInAHiddenViewTakesNoInput) {
  auto& row = column.add<StackView>(Orientation::horizontal);
  auto& field = row.add<TextField>();
  row.setHidden(true);
  ASSERT_TRUE(window.show({}));
  field.type("typed");
  EXPECT_EQ(field.text(), "");
  row.setHidden(false);
  field.type("typed");
  EXPECT_EQ(field.text(), "typed");
}

TEST_F(WidgetsTest, AViewOutsideOfAnyWindowTakesNoInput) {
  Button button("Button");
  button.setOnPress([this] { pressed.emplace_back("Button"); });
  button.press();
  EXPECT_THAT(pressed, IsEmpty());
}

TEST_F(WidgetsTest, AnEditThatChangesNothingIsNone) {
  int edits = 0;
  auto& field = column.add<TextField>();
  field.setOnEdit([&](const std::string&) { ++edits; });
  field.setText("text");
  ASSERT_TRUE(window.show({}));
  field.type("text");
  EXPECT_EQ(edits, 0);
  field.type("texts");
  EXPECT_EQ(edits, 1);
}

TEST_F(WidgetsTest, AnEditThatIsNotTakenIsShownToBeUndone) {
  News news;
  auto& field = column.add<TextField>();
  field.setEditable(false);
  field.setPeer(std::make_unique<CountingPeer>(news));
  field.type("typed");
  EXPECT_EQ(news.viewChanged, 1);
}

// Keys and the focus.

TEST_F(WidgetsTest, TheFirstButtonWithTheKeyHasItAlsoWhileItIsDisabled) {
  auto& first = addButton("First");
  auto& second = addButton("Second");
  first.setKeyEquivalent(keys::returnKey);
  second.setKeyEquivalent(keys::returnKey);
  EXPECT_EQ(window.defaultButton(), &first);
  EXPECT_EQ(window.cancelButton(), nullptr);
  first.setEnabled(false);
  ASSERT_TRUE(window.show({}));
  EXPECT_FALSE(window.key(pressOf(keys::returnKey)));
  EXPECT_THAT(pressed, IsEmpty());
  first.setEnabled(true);
  EXPECT_TRUE(window.key(pressOf(keys::returnKey)));
  EXPECT_THAT(pressed, ElementsAre("First"));
}

TEST_F(WidgetsTest, ACancelButtonHasEscapeBeforeTheWindow) {
  addButton("Cancel").setKeyEquivalent(keys::escape);
  window.setClosesOnEscape(true);
  ASSERT_TRUE(window.show({}));
  EXPECT_TRUE(window.key(pressOf(keys::escape)));
  EXPECT_THAT(pressed, ElementsAre("Cancel"));
  EXPECT_TRUE(window.visible());
}

TEST_F(WidgetsTest, AKeyThatNobodyWantsDoesNothing) {
  addButton("Button");
  column.add<TextField>();
  ASSERT_TRUE(window.show({}));
  EXPECT_FALSE(window.key(pressOf(keys::escape)));
  EXPECT_FALSE(window.key(pressOf({"x", 0})));
  EXPECT_TRUE(window.visible());
}

TEST_F(WidgetsTest, TabStopsInReadingOrderAlsoInsideOfContainers) {
  auto content = std::make_unique<StackView>(Orientation::vertical);
  auto& inside = content->add<TextField>();
  auto& before = addButton("Before");
  column.add<ScrollView>(std::move(content));
  auto& after = addButton("After");
  EXPECT_THAT(window.keyViews(), IsEmpty());
  ASSERT_TRUE(window.show({}));
  EXPECT_THAT(window.keyViews(), ElementsAre(&before, &inside, &after));

  EXPECT_EQ(window.firstResponder(), nullptr);
  window.key(pressOf(keys::backTab));
  EXPECT_EQ(window.firstResponder(), &after);
  window.makeFirstResponder(nullptr);
  window.key(pressOf(keys::tab));
  EXPECT_EQ(window.firstResponder(), &before);
}

TEST_F(WidgetsTest, TheUserMovesTheFocusOnlyToWhatTakesInput) {
  auto& field = column.add<TextField>();
  auto& disabled = column.add<TextField>();
  disabled.setEnabled(false);
  ASSERT_TRUE(window.show({}));
  window.focus(&field);
  window.focus(&disabled);
  EXPECT_EQ(window.firstResponder(), &field);
  window.focus(nullptr);
  EXPECT_EQ(window.firstResponder(), nullptr);
}

// Windows and sheets.

TEST_F(WidgetsTest, AWindowThatCannotBeShownStaysClosedAndMayTryAgain) {
  screen.failure = Error{"There is no display."};
  EXPECT_FALSE(window.show({}));
  EXPECT_FALSE(window.visible());
  screen.failure.reset();
  EXPECT_TRUE(window.show({}));
  EXPECT_TRUE(window.visible());
}

TEST_F(WidgetsTest, ASheetThatCannotBeShownLeavesItsParentFree) {
  addButton("Button").setKeyEquivalent(keys::returnKey);
  ASSERT_TRUE(window.show({}));
  Window sheet(screen);
  screen.failure = Error{"There is no display."};
  EXPECT_FALSE(window.beginSheet(sheet, {}));
  EXPECT_EQ(window.sheet(), nullptr);
  EXPECT_EQ(sheet.sheetParent(), nullptr);
  EXPECT_TRUE(window.key(pressOf(keys::returnKey)));
}

TEST_F(WidgetsTest, ASheetThatIsDestroyedFreesItsParent) {
  auto& button = addButton("Button");
  ASSERT_TRUE(window.show({}));
  auto sheet = std::make_unique<Window>(screen);
  ASSERT_TRUE(window.beginSheet(*sheet, {}));
  button.press();
  window.performClose();
  EXPECT_TRUE(window.visible());
  EXPECT_THAT(pressed, IsEmpty());
  sheet.reset();
  button.press();
  EXPECT_THAT(pressed, ElementsAre("Button"));
  window.performClose();
  EXPECT_FALSE(window.visible());
}

TEST_F(WidgetsTest, AWindowWithASheetRefusesASecondOne) {
  window.setTitle("Settings");
  ASSERT_TRUE(window.show({}));
  Window first(screen);
  ASSERT_TRUE(window.beginSheet(first, {}));
  Window second(screen);
  EXPECT_EQ(window.beginSheet(second, {}).error().description,
            "The window “Settings” already has an open sheet or panel.");
  EXPECT_FALSE(second.visible());
  first.close();
  EXPECT_TRUE(window.takesInput());
  EXPECT_TRUE(window.beginSheet(second, {}));
}

TEST_F(WidgetsTest, NoSheetBeginsWhileItsWindowClosesOrIsDestroyed) {
  struct Reopening final : WindowDelegate {
    explicit Reopening(Window& sheetParent) : parent(sheetParent) {}
    void windowWillClose(Window& sheet) override { began = parent.beginSheet(sheet, {}).ok(); }
    Window& parent;
    bool began = true;
  };
  auto parent = std::make_unique<Window>(screen);
  Reopening reopening(*parent);
  Window sheet(screen);
  sheet.setDelegate(&reopening);
  ASSERT_TRUE(parent->show({}));
  ASSERT_TRUE(parent->beginSheet(sheet, {}));
  parent->close();
  EXPECT_FALSE(reopening.began);
  EXPECT_FALSE(parent->visible());

  ASSERT_TRUE(parent->show({}));
  ASSERT_TRUE(parent->beginSheet(sheet, {}));
  reopening.began = true;
  parent.reset();
  EXPECT_FALSE(reopening.began);
  EXPECT_FALSE(sheet.visible());
}

TEST_F(WidgetsTest, AKeyThatNobodyElseWantsScrolls) {
  auto& scrollView = column.add<ScrollView>(std::make_unique<Label>("Text"));
  window.makeFirstResponder(&addButton("Button"));
  ASSERT_TRUE(window.show({}));
  for (const auto& [key, step] :
       {std::pair(keys::pageDown, ScrollStep::pageDown),
        std::pair(keys::pageUp, ScrollStep::pageUp), std::pair(keys::end, ScrollStep::end),
        std::pair(keys::home, ScrollStep::beginning)}) {
    EXPECT_TRUE(window.key(pressOf(key)));
    EXPECT_EQ(screen.widget(scrollView)->scrolledTo, step);
  }
  scrollView.setHidden(true);
  EXPECT_FALSE(window.key(pressOf(keys::end)));
}

TEST_F(WidgetsTest, AViewHasTheRoleOfItsKindOrTheOneThatIsStated) {
  auto& label = column.add<Label>("Text");
  auto& link = column.add<Button>("Link", ButtonStyle::link);
  ASSERT_TRUE(window.show({}));
  EXPECT_EQ(screen.widget(label)->accessibilityRole, AccessibilityRole::staticText);
  EXPECT_EQ(screen.widget(link)->accessibilityRole, AccessibilityRole::link);
  label.setAccessibilityRole(AccessibilityRole::button);
  EXPECT_EQ(screen.widget(label)->accessibilityRole, AccessibilityRole::button);
}

// Texts.

TEST_F(WidgetsTest, SeveralLinesInAFieldBecomeOne) {
  auto& field = column.add<TextField>();
  ASSERT_TRUE(window.show({}));
  field.setText("a\nb");
  EXPECT_EQ(field.text(), "a b");
  std::string edited;
  field.setOnEdit([&](const std::string& text) { edited = text; });
  field.type("a b\r\nEND\u2028c");
  EXPECT_EQ(edited, "a b END c");
  EXPECT_EQ(field.text(), "a b END c");
  EXPECT_EQ(screen.widget(field)->text, "a b END c");
}

TEST_F(WidgetsTest, AFieldThatShowsALineBreakIsToldOfItsOneLine) {
  auto& field = column.add<TextField>();
  ASSERT_TRUE(window.show({}));
  field.setText("a b");
  News news;
  field.setPeer(std::make_unique<CountingPeer>(news));
  field.setOnEdit([](const std::string&) { ADD_FAILURE(); });
  field.type("a\nb");
  EXPECT_EQ(news.viewChanged, 1);
}

TEST_F(WidgetsTest, AWindowIsCentredOncePerRequest) {
  window.center();
  EXPECT_TRUE(window.takeCenterRequest());
  EXPECT_FALSE(window.takeCenterRequest());
}

}  // namespace
}  // namespace quillmar
