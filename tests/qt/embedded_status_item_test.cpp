// The status icon in a tray of the older kind. There is none on a screen in memory: the toolkit's
// icon is told of clicks as it would hear of them from its window in the tray.

#include "platform/qt/menus/embedded_status_item.h"

#include <QGuiApplication>
#include <QImage>
#include <QMenu>
#include <QPointer>
#include <QStringList>
#include <QSystemTrayIcon>
#include <QTest>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/memory/memory_task_queues.h"
#include "tests/conformance/status_item_conformance.h"
#include "tests/qt/icon_theme.h"
#include "tests/qt/menus.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

using testing::IsEmpty;
using testing::SizeIs;

/// Images that are told apart by what is drawn in them, whatever the colour: each has a stripe at a
/// place of its own.
class StripedImages {
 public:
  StripedImages() {
    for (int i = 0; i < names.size(); ++i) {
      QImage picture(side, side, QImage::Format_ARGB32);
      picture.fill(Qt::transparent);
      for (int y = 0; y < side; ++y) picture.setPixelColor(stripe(i), y, Qt::red);
      theme_.add(names[i], side, 1, picture);
    }
  }

  /// Empty for an icon with nothing drawn in it.
  static std::string nameOf(const QIcon& icon) {
    const QImage picture = icon.pixmap(QSize(side, side)).toImage();
    QStringList found;
    for (int i = 0; i < names.size(); ++i) {
      if (!picture.isNull() && picture.pixelColor(stripe(i), 0).alpha() != 0) found += names[i];
    }
    return found.join(QLatin1Char('+')).toStdString();
  }

 private:
  static int stripe(int index) { return 3 * index; }

  static constexpr int side = 16;
  static inline const QStringList names = {"terminal", "folder", "statusIcon", "program"};
  IconTheme theme_;
};

/// A user whose desktop has a tray of the older kind alone.
class TrayHarness {
 public:
  using Opened = QPointer<QMenu>;

  TrayHarness() {
    handleReadyEvents();
    QGuiApplication::setWindowIcon(QIcon::fromTheme("program"));
  }
  ~TrayHarness() { QGuiApplication::setWindowIcon(QIcon()); }
  TrayHarness(const TrayHarness&) = delete;
  TrayHarness& operator=(const TrayHarness&) = delete;

  StatusItem& item() { return item_; }

  Opened open() {
    Q_EMIT item_.trayIcon().activated(QSystemTrayIcon::Trigger);
    handleReadyEvents();
    QMenu* opened = nullptr;
    for (QMenu* const menu : allMenus()) {
      if (!menu->isVisible()) continue;
      EXPECT_EQ(opened, nullptr) << "Two menus are open.";
      opened = menu;
    }
    return opened;
  }

  std::vector<ShownEntry> shown(const QMenu* menu) const {
    std::vector<ShownEntry> shown;
    if (menu == nullptr) return shown;
    for (QAction* const action : menu->actions()) {
      if (menu->actionGeometry(action).isEmpty()) continue;
      const QStringList texts = action->text().split(QLatin1Char('\t'));
      shown.push_back({withoutMnemonics(texts.front()).toStdString(),
                       StripedImages::nameOf(action->icon()), texts.size() > 1,
                       this->shown(action->menu()), action->isEnabled(), state(*action)});
    }
    return shown;
  }

  /// The click is in a window of the program, whatever activation another would bring.
  std::optional<Activation> click(const Opened& opened, const std::vector<std::string>& path,
                                  const Activation& /*activation*/ = {}) {
    // Queued work runs before the click.
    handleReadyEvents();
    QMenu* menu = opened;
    for (const std::string& title : path) {
      const bool isOpen = menu != nullptr && menu->isVisible();
      QAction* const action = isOpen ? entry(*menu, title) : nullptr;
      if (action == nullptr) return std::nullopt;
      QMenu* const submenu = action->menu();
      QTest::mouseClick(menu->windowHandle(), Qt::LeftButton, Qt::NoModifier,
                        menu->actionGeometry(action).center());
      if (submenu != nullptr) handleEventsUntil([&] { return submenu->isVisible(); });
      menu = submenu;
    }
    handleReadyEvents();
    if (opened && opened->isVisible()) return std::nullopt;
    return Activation();
  }

  void runTasks() { queue_.run(); }

  std::string icon() {
    if (!item_.trayIcon().isVisible()) return "";
    const std::string name = StripedImages::nameOf(item_.trayIcon().icon());
    return name == "program" ? "" : name;
  }

 private:
  static std::optional<ControlState> state(const QAction& action) {
    if (!action.isCheckable()) return std::nullopt;
    return action.isChecked() ? ControlState::on : ControlState::off;
  }

  static QAction* entry(const QMenu& menu, const std::string& title) {
    for (QAction* const action : menu.actions()) {
      if (withoutMnemonics(action->text()).toStdString() == title) return action;
    }
    return nullptr;
  }

  StripedImages images_;
  HeldTaskQueue queue_;
  EmbeddedStatusItem item_{queue_};
};

INSTANTIATE_TYPED_TEST_SUITE_P(EmbeddedStatusItem, StatusItemConformance, TrayHarness);

class EmbeddedStatusItemTest : public testing::Test {
 protected:
  EmbeddedStatusItemTest() { handleReadyEvents(); }

  void setMenu(const std::string& id) {
    item->setMenu(Menu{.title = "", .entries = {commandEntry("Title", id)}});
  }

  MemoryTaskQueues queues;
  std::unique_ptr<EmbeddedStatusItem> item =
      std::make_unique<EmbeddedStatusItem>(queues.mainQueue());
};

TEST_F(EmbeddedStatusItemTest, TheMenuOfTheOtherMouseButtonIsTheSame) {
  setMenu("1");
  setMenu("2");
  Q_EMIT item->trayIcon().activated(QSystemTrayIcon::Trigger);
  ASSERT_NE(item->trayIcon().contextMenu(), nullptr);
  EXPECT_TRUE(item->trayIcon().contextMenu()->isVisible());
}

TEST_F(EmbeddedStatusItemTest, OfTheMenusThatWereReplacedOnlyTheLastIsKept) {
  for (const char* const id : {"1", "2", "3", "4"}) setMenu(id);
  handleReadyEvents();
  EXPECT_THAT(allMenus(), SizeIs(2));
}

TEST_F(EmbeddedStatusItemTest, WhatWaitsWhenItGoesAwayIsDropped) {
  int runs = 0;
  item->setActionHandler([&](const ActionEntry&, const Activation&) { ++runs; });
  setMenu("1");
  setMenu("2");
  for (QMenu* const menu : allMenus()) menu->actions().front()->trigger();
  item.reset();
  queues.runAll();
  EXPECT_EQ(runs, 0);
  EXPECT_THAT(allMenus(), IsEmpty());
}

TEST_F(EmbeddedStatusItemTest, WithoutItsImageTheIconIsTheProgramsOwn) {
  StripedImages images;
  QGuiApplication::setWindowIcon(QIcon::fromTheme("program"));
  item->setImage(Image{.name = "nothing", .isTemplate = true, .pointSize = {}, .weight = {}});
  EXPECT_EQ(StripedImages::nameOf(item->trayIcon().icon()), "program");
  item->setImage(std::nullopt);
  EXPECT_EQ(StripedImages::nameOf(item->trayIcon().icon()), "program");
  EXPECT_TRUE(item->trayIcon().isVisible());
  QGuiApplication::setWindowIcon(QIcon());
}

}  // namespace
}  // namespace quillmar
