// The status icon in a tray of the older kind, where there is none: what doesn't need a tray.

#include "platform/qt/menus/embedded_status_item.h"

#include <QApplication>
#include <QMenu>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_task_queues.h"
#include "tests/qt/icon_theme.h"
#include "tests/qt/menus.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class EmbeddedStatusItemTest : public testing::Test {
 protected:
  EmbeddedStatusItemTest() {
    handleReadyEvents();
    item->setActionHandler([this](const ActionEntry& entry, const Activation& activation) {
      chosen.push_back(*entry.representedObject);
      EXPECT_EQ(activation, Activation());
    });
  }

  void setMenu(const std::string& id) {
    item->setMenu(Menu{.title = "", .entries = {commandEntry("Title", id)}});
  }
  MemoryTaskQueues queues;
  std::unique_ptr<EmbeddedStatusItem> item =
      std::make_unique<EmbeddedStatusItem>(queues.mainQueue());
  std::vector<std::string> chosen;
};

TEST_F(EmbeddedStatusItemTest, AChoiceRunsInATurnOfItsOwn) {
  setMenu("1");
  ASSERT_EQ(allMenus().size(), 1U);
  allMenus().front()->actions().front()->trigger();
  EXPECT_THAT(chosen, IsEmpty());
  queues.runAll();
  EXPECT_THAT(chosen, ElementsAre("1"));
}

TEST_F(EmbeddedStatusItemTest, AnOpenMenuDoesWhatItShowedThroughOneReplacement) {
  setMenu("old");
  QMenu* const open = allMenus().front();
  setMenu("new");
  open->actions().front()->trigger();
  queues.runAll();
  EXPECT_THAT(chosen, ElementsAre("old"));
}

TEST_F(EmbeddedStatusItemTest, AMenuThatWasReplacedIsGoneInALaterTurn) {
  setMenu("old");
  setMenu("new");
  handleReadyEvents();
  ASSERT_EQ(allMenus().size(), 1U);
  allMenus().front()->actions().front()->trigger();
  queues.runAll();
  EXPECT_THAT(chosen, ElementsAre("new"));
}

TEST_F(EmbeddedStatusItemTest, WhatWaitsWhenItGoesAwayIsDropped) {
  setMenu("1");
  allMenus().front()->actions().front()->trigger();
  item.reset();
  queues.runAll();
  EXPECT_THAT(chosen, IsEmpty());
  handleReadyEvents();
  EXPECT_THAT(allMenus(), IsEmpty());
}

TEST_F(EmbeddedStatusItemTest, AnIconThatIsNotThereIsNoHarm) {
  IconTheme theme;
  theme.add("square", 16, 1, plainPicture(16, Qt::red));
  for (const char* const name : {"square", "nothing"}) {
    item->setImage(Image{.name = name, .isTemplate = true, .pointSize = {}, .weight = {}});
  }
  item->setImage(std::nullopt);
  setMenu("1");
  allMenus().front()->actions().front()->trigger();
  queues.runAll();
  EXPECT_THAT(chosen, ElementsAre("1"));
}

}  // namespace
}  // namespace quillmar
