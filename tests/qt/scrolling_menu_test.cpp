// Menus that have more in them than the screen has room for.

#include "platform/qt/menus/scrolling_menu.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QFontMetrics>
#include <QImage>
#include <QProxyStyle>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <algorithm>
#include <cstdlib>
#include <string>
#include <utility>
#include <vector>

#include <QtTest/qtestspontaneevent.h>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_task_queues.h"
#include "platform/qt/menus/menu_widget.h"
#include "tests/qt/menus.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

constexpr int many = 150;

std::vector<MenuEntry> commands(int count) {
  std::vector<MenuEntry> entries;
  for (int i = 0; i < count; ++i) {
    entries.emplace_back(commandEntry("Item " + std::to_string(i), std::to_string(i)));
  }
  return entries;
}

class ScrollingMenuTest : public testing::Test {
 protected:
  ScrollingMenuTest() { handleReadyEvents(); }
  ~ScrollingMenuTest() override {
    menu.close();
    handleReadyEvents();
  }

  void fill(ScrollingMenu& widget, std::vector<MenuEntry> entries) {
    fillMenu(widget, Menu{.title = "", .entries = std::move(entries)},
             {.mainQueue = queues_.mainQueue(), .choose = [](const ActionEntry&) {}});
  }

  void popUp(std::vector<MenuEntry> entries) {
    fill(menu, std::move(entries));
    menu.popup(QPoint(100, 100));
    handleReadyEvents();
  }

  /// Its place there is for a real screen to tell.
  static bool fitsOnScreen(const QMenu& widget) {
    const QSize room = QApplication::primaryScreen()->availableSize();
    return widget.width() <= room.width() && widget.height() <= room.height();
  }

  /// One whole row.
  static bool isInSight(const QMenu& widget, int index) {
    return widget.rect().contains(widget.actionGeometry(widget.actions().at(index)));
  }

  static int selected(const QMenu& widget) {
    return static_cast<int>(widget.actions().indexOf(widget.activeAction()));
  }

  /// Down for a number below zero.
  static void turnWheel(const QWidget& window, const QPoint& place, int notches) {
    for (int i = 0; i < std::abs(notches); ++i) {
      QWheelEvent event(place, window.mapToGlobal(place), QPoint(),
                        QPoint(0, notches < 0 ? -120 : 120), Qt::NoButton, Qt::NoModifier,
                        Qt::NoScrollPhase, false);
      QSpontaneKeyEvent::setSpontaneous(&event);  // Others stay where they are sent.
      qApp->notify(window.windowHandle(), &event);
    }
  }

  QPoint middleOf(int index) const {
    return menu.actionGeometry(menu.actions().at(index)).center();
  }

  ScrollingMenu menu;

 private:
  MemoryTaskQueues queues_;
};

TEST_F(ScrollingMenuTest, ALongMenuIsOneColumnThatFitsOnTheScreen) {
  popUp(commands(many));
  EXPECT_TRUE(fitsOnScreen(menu));
  EXPECT_EQ(middleOf(0).x(), middleOf(many - 1).x());
  EXPECT_TRUE(isInSight(menu, 0));
  EXPECT_FALSE(isInSight(menu, many - 1));
}

TEST_F(ScrollingMenuTest, UpGoesToTheLastEntryAndShowsIt) {
  popUp(commands(many));
  QTest::keyClick(&menu, Qt::Key_Up);
  EXPECT_EQ(selected(menu), many - 1);
  EXPECT_TRUE(isInSight(menu, many - 1));
}

TEST_F(ScrollingMenuTest, TheSelectionIsInSightAllTheWayAround) {
  popUp(commands(many));
  for (const Qt::Key key : {Qt::Key_Down, Qt::Key_Up}) {
    for (int i = 0; i <= many; ++i) {
      QTest::keyClick(&menu, key);
      ASSERT_TRUE(isInSight(menu, selected(menu))) << selected(menu);
    }
  }
}

TEST_F(ScrollingMenuTest, ASubmenuScrollsToo) {
  SubmenuEntry folder;
  folder.title = "Folder";
  folder.submenu.entries = commands(many);
  popUp({folder});
  QTest::keyClick(&menu, Qt::Key_Down);
  QTest::keyClick(&menu, Qt::Key_Right);
  QMenu* const submenu = menu.actions().front()->menu();
  ASSERT_TRUE(submenu->isVisible());
  EXPECT_TRUE(fitsOnScreen(*submenu));
  QTest::keyClick(submenu, Qt::Key_Up);
  EXPECT_EQ(selected(*submenu), many - 1);
  EXPECT_TRUE(isInSight(*submenu, many - 1));
}

TEST_F(ScrollingMenuTest, TheWheelScrollsAndSelectsWhatComesBelowThePointer) {
  popUp(commands(many));
  const QPoint place = middleOf(10);
  turnWheel(menu, place, -5);
  EXPECT_FALSE(isInSight(menu, 0));
  EXPECT_GT(selected(menu), 10);
  EXPECT_TRUE(menu.actionGeometry(menu.activeAction()).contains(place));
  turnWheel(menu, place, 5);
  EXPECT_TRUE(isInSight(menu, 0));
  EXPECT_EQ(selected(menu), 10);
}

TEST_F(ScrollingMenuTest, InAWindowTheWheelScrollsWhatTheMenuLiesIn) {
  QScrollArea area;
  auto* const inside = new ScrollingMenu(&area);
  inside->setWindowFlags(Qt::Widget);
  fill(*inside, commands(many));
  area.setWidget(inside);
  inside->show();
  area.show();
  turnWheel(area, QPoint(20, 20), -1);
  EXPECT_GT(area.verticalScrollBar()->value(), 0);
}

TEST_F(ScrollingMenuTest, KeysFindASelectionThatTheArrowsHaveLeftBehind) {
  popUp(commands(many));
  QTest::keyClick(&menu, Qt::Key_Down);
  QTest::mouseMove(menu.windowHandle(), QPoint(menu.width() / 2, menu.height() - 3));
  handleEventsUntil([this] { return !isInSight(menu, 3); });
  ASSERT_EQ(selected(menu), 0);
  QTest::keyClick(&menu, Qt::Key_Down);
  EXPECT_EQ(selected(menu), 1);
  EXPECT_TRUE(isInSight(menu, 1));
}

TEST_F(ScrollingMenuTest, AFolderThatKeysBringIntoSightStaysClosed) {
  std::vector<MenuEntry> entries = commands(many);
  SubmenuEntry folder;
  folder.title = "Folder";
  folder.submenu.entries = commands(2);
  entries.emplace_back(folder);
  popUp(std::move(entries));
  QTest::keyClick(&menu, Qt::Key_Up);
  handleReadyEvents();
  EXPECT_TRUE(isInSight(menu, many));
  EXPECT_FALSE(menu.actions().back()->menu()->isVisible());
  QTest::keyClick(&menu, Qt::Key_Right);
  EXPECT_TRUE(menu.actions().back()->menu()->isVisible());
}

TEST_F(ScrollingMenuTest, KeysOpenNoFolderThatWasInSightAllAlong) {
  SubmenuEntry folder;
  folder.title = "Folder";
  folder.submenu.entries = commands(2);
  popUp({folder, commandEntry("Item", "1"), folder});
  int opened = 0;
  for (const QAction* const action : menu.actions()) {
    if (action->menu() == nullptr) continue;
    QObject::connect(action->menu(), &QMenu::aboutToShow, &menu, [&opened] { ++opened; });
  }
  for (int i = 0; i < 3; ++i) QTest::keyClick(&menu, Qt::Key_Down);
  EXPECT_EQ(opened, 0);
}

class LongTitleTest : public ScrollingMenuTest {
 protected:
  /// Of a title that is cut as it should be.
  QString cut(const QString& title) const {
    const QFontMetrics metrics = menu.fontMetrics();
    return metrics.elidedText(title, Qt::ElideRight, 60 * metrics.averageCharWidth());
  }

  QImage pictureWith(const QString& title) {
    ScrollingMenu pictured;
    ActionEntry entry = commandEntry(title.toStdString(), "1");
    entry.keyEquivalent = KeyEquivalent{"k"};
    fill(pictured, {entry, commandEntry(std::string(60, 'n'), "2")});
    pictured.ensurePolished();
    pictured.resize(pictured.sizeHint());
    return pictured.grab().toImage();
  }
};

TEST_F(LongTitleTest, ItEndsInAnEllipsis) {
  const QString title = QStringLiteral("A long title ").repeated(200);
  ASSERT_TRUE(cut(title).endsWith(QStringLiteral("…")));
  EXPECT_EQ(pictureWith(title), pictureWith(cut(title)));
}

TEST_F(LongTitleTest, AmpersandsAreShownAsAmpersands) {
  for (const int offset : {0, 1}) {
    const QString title = QString(offset, u'x') + QStringLiteral("&").repeated(200);
    EXPECT_EQ(pictureWith(title), pictureWith(cut(title)));
  }
}

TEST_F(LongTitleTest, ATitleThatHasRoomIsWhole) {
  const QString title = QStringLiteral("Fish & chips");
  ASSERT_EQ(cut(title), title);
  EXPECT_NE(pictureWith(title), pictureWith(QStringLiteral("Fish & chip…")));
}

TEST_F(LongTitleTest, ShortcutsAndArrowsStayOnTheScreen) {
  ActionEntry command = commandEntry(std::string(2000, 'W'), "1");
  command.keyEquivalent = KeyEquivalent{"k", modifiers::control | modifiers::option};
  QFont large = menu.font();
  large.setPixelSize(60);
  menu.setFont(large);
  SubmenuEntry folder;
  folder.title = std::string(2000, 'W');
  folder.submenu.entries = commands(1);
  fill(menu, {command, folder});
  menu.popup(QPoint());
  EXPECT_TRUE(fitsOnScreen(menu));
  for (QAction* const action : menu.actions()) {
    EXPECT_TRUE(menu.rect().contains(menu.actionGeometry(action)));
  }
}

TEST_F(LongTitleTest, AssistiveTechnologyGetsTheFullTitle) {
  const QString title = QStringLiteral("A long title ").repeated(200);
  popUp({commandEntry(title.toStdString(), "1")});
  QAccessibleInterface* const entry = QAccessible::queryAccessibleInterface(&menu)->child(0);
  EXPECT_EQ(entry->text(QAccessible::Name), title);
}

TEST_F(ScrollingMenuTest, ItFollowsTheStyleOfTheApplication) {
  const QString before = QApplication::style()->name();
  const QString other =
      before == QLatin1String("windows") ? QStringLiteral("fusion") : QStringLiteral("windows");
  popUp(commands(many));
  const auto* const style = dynamic_cast<const QProxyStyle*>(menu.style());
  ASSERT_NE(style, nullptr);
  EXPECT_EQ(style->baseStyle()->name(), before);
  menu.close();
  QApplication::setStyle(other);
  menu.popup(QPoint());
  EXPECT_EQ(dynamic_cast<const QProxyStyle*>(menu.style())->baseStyle()->name(), other);
  EXPECT_TRUE(fitsOnScreen(menu));
  menu.close();
  QApplication::setStyle(before);
}

}  // namespace
}  // namespace quillmar
