// How the list of completions looks, where it is, and what screen readers are told of it.

#include <QAccessible>
#include <QApplication>
#include <QGuiApplication>
#include <QLineEdit>
#include <QListView>
#include <QScreen>
#include <QTest>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/text_field.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/icon_theme.h"
#include "tests/qt/pictures.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

using testing::ElementsAre;

Image symbol(const std::string& name, bool isTemplate) {
  return {.name = name, .isTemplate = isTemplate, .pointSize = {}, .weight = {}};
}

class TextFieldCompletionsTest : public WidgetsFixture<QtUser> {
 protected:
  TextFieldCompletionsTest() : field(addField("")) {
    field.setCompletions([this](const std::string&) { return offered; });
    window->makeFirstResponder(&field);
    offered = {{.text = "bolt", .image = {}}, {.text = "bolt.fill", .image = {}}};
  }
  ~TextFieldCompletionsTest() override { QApplication::setPalette(palette_); }

  void showAndType(const std::string& text) {
    show();
    type(text);
  }
  void type(const std::string& text) {
    harness.typeAtFocus(*window, text);
    harness.settle();
  }
  void press(const KeyEquivalent& key) {
    harness.pressKey(*window, pressOf(key));
    harness.settle();
  }
  void offerMany() {
    offered.clear();
    for (int i = 0; i < 50; ++i) offered.push_back({.text = "b" + std::to_string(i), .image = {}});
  }
  QWidget& line() { return widgetOf(field); }
  QListView& list() { return *completionListOf(field); }
  QModelIndex row(int index) { return list().model()->index(index, 0); }
  /// The symbol of a row.
  QImage pictureOfSymbol(int index) {
    QRect place = list().visualRect(row(index));
    place.setWidth(place.height());
    return list().viewport()->grab(place).toImage();
  }

  TextField& field;
  std::vector<TextCompletion> offered;

 private:
  const QPalette palette_ = QApplication::palette();
};

TEST_F(TextFieldCompletionsTest, TheListIsBelowTheFieldAndAtLeastAsWide) {
  showAndType("b");
  const QPoint below = line().mapToGlobal(QPoint(0, line().height()));
  EXPECT_EQ(list().geometry().topLeft(), below);
  EXPECT_EQ(list().width(), line().width());
  offered = {{.text = std::string(60, 'W'), .image = {}}};
  type("W");
  EXPECT_GT(list().width(), line().width());
  EXPECT_GE(list().viewport()->width(), list().sizeHintForColumn(0));
}

TEST_F(TextFieldCompletionsTest, TheListIsAboveTheFieldAtTheBottomOfTheScreen) {
  offerMany();
  show();
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  widgetOf(*window).move(screen.left(), screen.bottom() - line().geometry().bottom() - 20);
  type("b");
  EXPECT_EQ(list().geometry().bottom() + 1, line().mapToGlobal(QPoint(0, 0)).y());
}

TEST_F(TextFieldCompletionsTest, TheListMovesWithItsWindow) {
  showAndType("b");
  const QPoint before = list().pos();
  widgetOf(*window).move(widgetOf(*window).pos() + QPoint(30, 40));
  harness.settle();
  EXPECT_EQ(list().pos(), before + QPoint(30, 40));
}

TEST_F(TextFieldCompletionsTest, EightRowsAreInSightAndTheKeysScroll) {
  offerMany();
  showAndType("b");
  EXPECT_EQ(list().viewport()->height(), 8 * list().visualRect(row(0)).height());
  press(keys::up);
  EXPECT_TRUE(list().viewport()->rect().contains(list().visualRect(row(49))));
  type("x");
  EXPECT_TRUE(list().viewport()->rect().contains(list().visualRect(row(0))));
}

TEST_F(TextFieldCompletionsTest, TheKeyboardStaysInTheField) {
  showAndType("b");
  press(keys::down);
  EXPECT_EQ(QApplication::activeWindow(), &widgetOf(*window));
  EXPECT_EQ(QApplication::focusWidget(), &line());
}

TEST_F(TextFieldCompletionsTest, ATemplateHasTheColourOfTheTextInLightAndDark) {
  IconTheme icons;
  icons.add("bolt", 16, 1, plainPicture(16, Qt::red));
  offered = {{.text = "", .image = symbol("bolt", true)}, {.text = "", .image = {}}};
  show();
  for (const bool isDark : {false, true}) {
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Base, isDark ? Qt::black : Qt::white);
    palette.setColor(QPalette::Text, isDark ? Qt::green : Qt::blue);
    palette.setColor(QPalette::Highlight, Qt::darkGray);
    palette.setColor(QPalette::HighlightedText, Qt::yellow);
    QApplication::setPalette(palette);
    type("b");
    EXPECT_EQ(inkColor(pictureOfSymbol(0)), QColor(isDark ? Qt::green : Qt::blue));
    press(keys::down);
    EXPECT_EQ(inkColor(pictureOfSymbol(0)), QColor(Qt::yellow));
  }
}

TEST_F(TextFieldCompletionsTest, TheFrameAndTheRowUnderThePointerStandOut) {
  showAndType("b");
  const QColor paper = list().palette().color(QPalette::Base);
  EXPECT_GT(contrast(list().grab().toImage().pixelColor(0, 10), paper), 1.5);
  const QPoint place = list().visualRect(row(1)).topRight() + QPoint(-2, 2);
  EXPECT_EQ(list().viewport()->grab().toImage().pixelColor(place), paper);
  QTest::mouseMove(list().windowHandle(), list().viewport()->mapTo(&list(), place));
  harness.settle();
  EXPECT_NE(list().viewport()->grab().toImage().pixelColor(place), paper);
  EXPECT_THAT(harness.completionsOnScreen(field), ElementsAre("bolt", "bolt.fill"));
}

TEST_F(TextFieldCompletionsTest, AnImageThatIsNoTemplateKeepsItsColour) {
  IconTheme icons;
  icons.add("app", 16, 1, plainPicture(16, Qt::red));
  offered = {{.text = "", .image = symbol("app", false)}};
  showAndType("b");
  EXPECT_EQ(inkColor(pictureOfSymbol(0)), QColor(Qt::red));
}

TEST_F(TextFieldCompletionsTest, AClickElsewhereInTheWindowClosesTheList) {
  showAndType("b");
  harness.clickBesideViews(*window);
  EXPECT_EQ(completionListOf(field), nullptr);
  type("o");
  EXPECT_NE(completionListOf(field), nullptr);
  harness.click(field);
  EXPECT_EQ(completionListOf(field), nullptr);
  EXPECT_EQ(field.text(), "bo");
}

TEST_F(TextFieldCompletionsTest, APressThatEndsOnAnotherRowAcceptsNothing) {
  showAndType("b");
  QWindow* const handle = list().windowHandle();
  const auto place = [this](int index) {
    return list().viewport()->mapTo(&list(), list().visualRect(row(index)).center());
  };
  QTest::mousePress(handle, Qt::LeftButton, {}, place(0));
  QTest::mouseRelease(handle, Qt::LeftButton, {}, place(1));
  EXPECT_EQ(field.text(), "b");
  EXPECT_THAT(harness.completionsOnScreen(field), ElementsAre("bolt", "bolt.fill"));
}

TEST_F(TextFieldCompletionsTest, AnAcceptedCompletionIsUndoneAsOneEdit) {
  showAndType("b");
  press(keys::down);
  press(keys::returnKey);
  EXPECT_EQ(harness.textOnScreen(field), "bolt");
  press(undo);
  EXPECT_EQ(harness.textOnScreen(field), "b");
  EXPECT_EQ(field.text(), "b");
}

TEST_F(TextFieldCompletionsTest, AFieldThatIsRemovedTakesItsListAlong) {
  showAndType("b");
  const int before = harness.widgetCount();
  stack->remove(field);
  harness.settle();
  EXPECT_LT(harness.widgetCount(), before);
  for (const QWidget* const widget : QApplication::topLevelWidgets()) {
    EXPECT_EQ(dynamic_cast<const QListView*>(widget), nullptr);
  }
}

TEST_F(TextFieldCompletionsTest, AScreenReaderFindsTheListAndItsSelectedRow) {
  field.setAccessibilityLabel("Icon");
  showAndType("b");
  QAccessibleInterface& accessible = *QAccessible::queryAccessibleInterface(&list());
  EXPECT_EQ(accessible.role(), QAccessible::List);
  EXPECT_EQ(accessible.text(QAccessible::Name), QStringLiteral("Icon"));
  ASSERT_EQ(accessible.childCount(), 2);
  EXPECT_EQ(accessible.child(1)->role(), QAccessible::ListItem);
  EXPECT_EQ(accessible.child(1)->text(QAccessible::Name), QStringLiteral("bolt.fill"));
  press(keys::up);
  EXPECT_TRUE(accessible.child(1)->state().selected);
  EXPECT_TRUE(accessible.child(1)->state().focused);
  EXPECT_FALSE(accessible.child(0)->state().selected);
}

}  // namespace
}  // namespace quillmar
