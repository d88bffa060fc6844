// The menu at the pointer.

#include <QApplication>
#include <QKeyEvent>
#include <QMenu>
#include <QScreen>
#include <QTest>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_task_queues.h"
#include "platform/qt/menus/embedded_status_item.h"
#include "platform/qt/windows/qt_window_system.h"
#include "tests/qt/menus.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

class PopUpMenuTest : public testing::Test {
 protected:
  PopUpMenuTest() { handleReadyEvents(); }
  ~PopUpMenuTest() override {
    for (QMenu* const menu : allMenus()) menu->close();
    handleReadyEvents();
  }

  void popUp(const std::string& title, std::optional<ScreenPoint> position = {}) {
    ASSERT_TRUE(
        windows.popUpMenu(Menu{.title = "", .entries = {commandEntry(title, title)}}, position, {},
                          [this](const ActionEntry& entry) { chosen.push_back(entry.title); }));
    handleReadyEvents();
  }

  static void chooseFirst() {
    QMenu* const menu = allMenus().front();
    menu->setActiveAction(menu->actions().front());
    press(Qt::Key_Return);
  }

  static void press(Qt::Key key) {
    QKeyEvent event(QEvent::KeyPress, key, Qt::NoModifier);
    QCoreApplication::sendEvent(allMenus().front(), &event);
    handleReadyEvents();
  }

  static std::vector<std::string> openMenus() {
    std::vector<std::string> titles;
    for (const QMenu* const menu : allMenus()) {
      if (menu->isVisible()) titles.push_back(menu->actions().front()->text().toStdString());
    }
    return titles;
  }

  MemoryTaskQueues queues;
  std::vector<std::string> chosen;
  QtWindowSystem windows{queues.mainQueue()};
};

TEST_F(PopUpMenuTest, ItOpensAtThePointer) {
  QCursor::setPos(120, 130);
  popUp("First");
  EXPECT_THAT(openMenus(), ElementsAre("First"));
  EXPECT_EQ(allMenus().front()->pos(), QPoint(120, 130));
}

TEST_F(PopUpMenuTest, ItOpensAtThePositionThatWasAskedFor) {
  QCursor::setPos(310, 190);
  popUp("First", ScreenPoint{300, 200});
  EXPECT_EQ(allMenus().front()->pos(), QPoint(300, 200));
}

TEST_F(PopUpMenuTest, FarFromAPositionThatIsWrongItOpensAtThePointer) {
  QCursor::setPos(400, 10);
  popUp("First", ScreenPoint{0, 25});
  EXPECT_EQ(allMenus().front()->pos(), QPoint(400, 10));
}

TEST_F(PopUpMenuTest, AMenuThatDoesNotFitBelowThePositionOpensAboveItWhereverThePointerIs) {
  const QRect screen = QGuiApplication::primaryScreen()->geometry();
  const QPoint position = screen.bottomRight() - QPoint(0, 10);
  for (const QPoint pointer : {position, position - QPoint(5, 5), position + QPoint(0, 5)}) {
    QCursor::setPos(pointer);
    popUp("First", ScreenPoint{position.x(), position.y()});
    const QRect menu = allMenus().front()->frameGeometry();
    EXPECT_TRUE(screen.contains(menu));
    EXPECT_EQ(menu.bottom(), position.y() - 1);
    allMenus().front()->close();
    handleReadyEvents();
  }
}

TEST_F(PopUpMenuTest, ASecondRequestForAPositionClosesIt) {
  popUp("First", ScreenPoint{300, 200});
  popUp("First", ScreenPoint{300, 200});
  EXPECT_THAT(openMenus(), IsEmpty());
  popUp("First", ScreenPoint{300, 200});
  EXPECT_THAT(openMenus(), ElementsAre("First"));
}

TEST_F(PopUpMenuTest, AClickThatHasClosedItDoesNotOpenItAgain) {
  popUp("First", ScreenPoint{300, 200});
  QTest::mousePress(allMenus().front()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                    QPoint(-50, -50));
  EXPECT_THAT(openMenus(), IsEmpty());
  popUp("First", ScreenPoint{300, 200});
  EXPECT_THAT(openMenus(), IsEmpty());
  popUp("First", ScreenPoint{300, 200});
  EXPECT_THAT(openMenus(), ElementsAre("First"));
  QTest::mouseRelease(allMenus().front()->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                      QPoint(-50, -50));
}

TEST_F(PopUpMenuTest, AMenuThatTheKeyboardClosedOpensWithTheNextClick) {
  popUp("First", ScreenPoint{300, 200});
  press(Qt::Key_Escape);
  popUp("First", ScreenPoint{300, 200});
  EXPECT_THAT(openMenus(), ElementsAre("First"));
}

TEST_F(PopUpMenuTest, AnotherOneTakesThePlaceOfAnOpenOne) {
  popUp("First");
  popUp("Second");
  EXPECT_THAT(openMenus(), ElementsAre("Second"));
  EXPECT_THAT(allMenus(), SizeIs(1));
}

TEST_F(PopUpMenuTest, TheMenuOfTheIconClosesForIt) {
  EmbeddedStatusItem icon(queues.mainQueue());
  icon.setMenu(Menu{.title = "", .entries = {commandEntry("Of the icon", "1")}});
  Q_EMIT icon.trayIcon().activated(QSystemTrayIcon::Trigger);
  ASSERT_THAT(openMenus(), ElementsAre("Of the icon"));
  popUp("Popped up");
  EXPECT_THAT(openMenus(), ElementsAre("Popped up"));
}

TEST_F(PopUpMenuTest, WhatWasChosenStillRunsWhenAnotherOneTakesItsPlace) {
  popUp("First");
  chooseFirst();
  popUp("Second");
  queues.runAll();
  EXPECT_THAT(chosen, ElementsAre("First"));
}

TEST_F(PopUpMenuTest, AnActionOfTheEntryRunsInstead) {
  int runs = 0;
  ActionEntry entry = commandEntry("Title", "1");
  entry.action = [&](const Activation&) { ++runs; };
  ASSERT_TRUE(windows.popUpMenu(Menu{.title = "", .entries = {entry}}, {}, {}, nullptr));
  handleReadyEvents();
  chooseFirst();
  queues.runAll();
  EXPECT_EQ(runs, 1);
}

TEST_F(PopUpMenuTest, AClosedOneIsGoneAndCanBeOpenedAgain) {
  popUp("First");
  allMenus().front()->close();
  handleReadyEvents();
  EXPECT_THAT(allMenus(), IsEmpty());
  EXPECT_THAT(chosen, IsEmpty());
  popUp("Second");
  EXPECT_THAT(openMenus(), ElementsAre("Second"));
}

TEST_F(PopUpMenuTest, AChoiceClosesItAndRunsOnceAfterwards) {
  popUp("First");
  chooseFirst();
  EXPECT_THAT(allMenus(), IsEmpty());
  EXPECT_THAT(chosen, IsEmpty());
  queues.runAll();
  EXPECT_THAT(chosen, ElementsAre("First"));
}

}  // namespace
}  // namespace quillmar
