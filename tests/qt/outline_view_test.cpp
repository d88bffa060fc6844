// How outlines look, scroll, and describe themselves to screen readers.

#include "platform/widgets/outline_view.h"

#include <QAccessible>
#include <QApplication>
#include <QHelpEvent>
#include <QPaintEvent>
#include <QScrollBar>
#include <QTest>
#include <QToolTip>
#include <QTreeView>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/conformance/widgets_fixture.h"
#include "tests/conformance/widgets_outline_conformance.h"
#include "tests/qt/pictures.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

/// What has been drawn of a widget since this was created.
class PaintedRegion final : public QObject {
 public:
  explicit PaintedRegion(QWidget& widget) { widget.installEventFilter(this); }

  const QRegion& region() const { return region_; }

 protected:
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (event->type() == QEvent::Paint) region_ += static_cast<QPaintEvent*>(event)->region();
    return false;
  }

 private:
  QRegion region_;
};

class OutlineViewTest : public WidgetsFixture<QtUser> {
 protected:
  OutlineViewTest() {
    rows.folders = {{"Audio", {"Mute", "Play"}}, {"Many", {}}};
    for (int i = 0; i < 200; ++i) rows.folders[1].items.push_back("Item " + std::to_string(i));
    outline = &stack->add<OutlineView>(rows);
    outline->setWidth(300);
    outline->setHeight(200);
    window->setContentSize({});
    window->makeFirstResponder(outline);
  }

  void showExpanded() {
    outline->setExpanded("Audio", true);
    outline->setExpanded("Many", true);
    show();
  }
  QTreeView& tree() const { return dynamic_cast<QTreeView&>(widgetOf(*outline)); }
  QScrollBar& bar() const { return *tree().verticalScrollBar(); }
  QModelIndex index(std::size_t row) const {
    QModelIndex at = tree().model()->index(0, 0);
    for (std::size_t i = 0; i < row; ++i) at = tree().indexBelow(at);
    return at;
  }
  bool isInSight(std::size_t row) const {
    return tree().viewport()->rect().contains(tree().visualRect(index(row)).adjusted(0, 0, -1, 0));
  }
  /// The first child is the header, which is hidden.
  QAccessibleInterface& accessibleRow(int row) const {
    return *QAccessible::queryAccessibleInterface(&tree())->child(row + 1);
  }
  QString toolTipOf(std::size_t row) const {
    QToolTip::hideText();
    handleEventsUntil([] { return !QToolTip::isVisible(); });
    const QPoint place = tree().visualRect(index(row)).center();
    QHelpEvent event(QEvent::ToolTip, place, tree().viewport()->mapToGlobal(place));
    QCoreApplication::sendEvent(tree().viewport(), &event);
    return QToolTip::text();
  }

  FolderRows rows;
  OutlineView* outline;
};

TEST_F(OutlineViewTest, RowsHaveTheStatedHeightAndIndentation) {
  showExpanded();
  const QRect folder = tree().visualRect(index(0));
  const QRect item = tree().visualRect(index(1));
  EXPECT_EQ(folder.height(), 24);
  EXPECT_EQ(item.top() - folder.top(), 24);
  EXPECT_EQ(item.left() - folder.left(), 20);
}

TEST_F(OutlineViewTest, TheKeyboardScrollsToTheSelectedRow) {
  showExpanded();
  harness.pressKey(*window, pressOf(keys::end));
  EXPECT_TRUE(isInSight(outline->rowCount() - 1));
  harness.pressKey(*window, pressOf(keys::pageUp));
  harness.pressKey(*window, pressOf(keys::home));
  EXPECT_TRUE(isInSight(0));
}

TEST_F(OutlineViewTest, PageDownMovesByTheRowsInSight) {
  showExpanded();
  outline->setSelectedIndex(0);
  harness.pressKey(*window, pressOf(keys::pageDown));
  EXPECT_EQ(outline->selectedIndex(), 7U);
}

TEST_F(OutlineViewTest, AReloadKeepsTheScrollPosition) {
  showExpanded();
  outline->setSelectedIndex(0);
  harness.settle();
  bar().setValue(1200);
  outline->reload();
  harness.settle();
  EXPECT_EQ(bar().value(), 1200);
  rows.folders[1].items[150] = "Other";
  outline->reload();
  harness.settle();
  EXPECT_EQ(bar().value(), 1200);
  EXPECT_EQ(outline->selectedIndex(), 0U);
}

TEST_F(OutlineViewTest, AScreenReaderHearsTheTextTheLevelAndTheStatesOfARow) {
  rows.states["Audio|Play"] = ControlState::on;
  outline->setAccessibilityLabel("Menu items");
  showExpanded();
  outline->setExpanded("Many", false);
  outline->setSelectedIndex(2);
  harness.settle();
  QAccessibleInterface& outlineItself = *QAccessible::queryAccessibleInterface(&tree());
  EXPECT_EQ(outlineItself.role(), QAccessible::Tree);
  EXPECT_EQ(outlineItself.text(QAccessible::Name), QStringLiteral("Menu items"));
  const QAccessible::State folder = accessibleRow(0).state();
  EXPECT_EQ(accessibleRow(0).role(), QAccessible::TreeItem);
  EXPECT_EQ(accessibleRow(0).text(QAccessible::Name), QStringLiteral("Audio"));
  EXPECT_EQ(accessibleRow(0).text(QAccessible::Description), QStringLiteral("level 1"));
  EXPECT_TRUE(folder.expandable);
  EXPECT_TRUE(folder.expanded);
  EXPECT_FALSE(folder.checkable);
  EXPECT_FALSE(accessibleRow(3).state().expanded);
  const QAccessible::State item = accessibleRow(2).state();
  EXPECT_EQ(accessibleRow(2).text(QAccessible::Name), QStringLiteral("Play, ⌃A"));
  EXPECT_EQ(accessibleRow(2).text(QAccessible::Description), QStringLiteral("level 2"));
  EXPECT_FALSE(item.expandable);
  EXPECT_TRUE(item.checkable);
  EXPECT_TRUE(item.checked);
  EXPECT_TRUE(item.selected);
  EXPECT_FALSE(accessibleRow(1).state().checked);
  EXPECT_EQ(accessibleRow(1).text(QAccessible::Description),
            QStringLiteral("level 2, not checked"));
}

TEST_F(OutlineViewTest, ARowThatIsCutOffHasAToolTip) {
  rows.folders[0].items[0] = "<b>" + std::string(100, 'x');
  showExpanded();
  EXPECT_EQ(toolTipOf(1), QStringLiteral("&lt;b&gt;") + QString(100, u'x'));
  EXPECT_EQ(toolTipOf(2), QString());
}

TEST_F(OutlineViewTest, NoTextIsCutOffWhereThereIsRoom) {
  for (int length = 1; length <= 20; ++length) {
    const std::string text = std::string(static_cast<std::size_t>(length), 'i') + "l";
    SCOPED_TRACE(text);
    rows.folders[0].name = text;
    outline->reload();
    show();
    QRect row = tree().visualRect(index(0));
    row.moveTopLeft(tree().viewport()->mapTo(&tree(), row.topLeft()));
    const QImage picture = pictureOf(*outline).copy(row);
    // The last character is a high one, an ellipsis is not.
    const QRect last(inkFrame(picture).right() - 2, 0, 4, picture.height());
    EXPECT_GT(inkFrame(picture.copy(last)).height(), 8);
  }
}

TEST_F(OutlineViewTest, AnUnderscoreIsDrawnInEverySizeOfTheDesktopFont) {
  const QFont before = QApplication::font();
  for (int size = 10; size <= 24; ++size) {
    SCOPED_TRACE(size);
    QFont font = before;
    font.setPixelSize(size);
    QApplication::setFont(font);
    rows.folders[0].name = "_";
    outline->reload();
    show();
    QRect row = tree().visualRect(index(0));
    row.moveTopLeft(tree().viewport()->mapTo(&tree(), row.topLeft()));
    EXPECT_FALSE(inkFrame(pictureOf(*outline).copy(row)).isEmpty());
  }
  QApplication::setFont(before);
}

TEST_F(OutlineViewTest, AChangedValueOfTheLastFolderIsDrawn) {
  rows.folders.pop_back();
  outline->reload();
  outline->setExpanded("Audio", true);
  show();
  const PaintedRegion painted(*tree().viewport());
  rows.states["Audio|Play"] = ControlState::on;
  outline->reload();
  harness.settle();
  EXPECT_TRUE(painted.region().contains(tree().visualRect(index(2)).center()));
}

TEST_F(OutlineViewTest, APointerThatMovesOnACheckboxSelectsNothing) {
  showExpanded();
  QWidget& viewport = *tree().viewport();
  const QPoint box = tree().visualRect(index(1)).topLeft() + QPoint(5, 12);
  QTest::mousePress(&viewport, Qt::LeftButton, {}, box);
  QMouseEvent move(QEvent::MouseMove, box + QPoint(1, 0), viewport.mapToGlobal(box + QPoint(1, 0)),
                   Qt::NoButton, Qt::LeftButton, {});
  QCoreApplication::sendEvent(&viewport, &move);
  QTest::mouseRelease(&viewport, Qt::LeftButton, {}, box + QPoint(1, 0));
  EXPECT_EQ(outline->selectedIndex(), std::nullopt);
}

TEST_F(OutlineViewTest, TheFocusIsARing) {
  Button& other = addButton("Other");
  showExpanded();
  const QImage focused = pictureOf(*outline);
  window->makeFirstResponder(&other);
  harness.settle();
  EXPECT_NE(focused.pixelColor(100, 1), pictureOf(*outline).pixelColor(100, 1));
}

}  // namespace
}  // namespace quillmar
