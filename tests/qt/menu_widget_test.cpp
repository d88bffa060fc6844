// What the suite of status items does not see of their menus.

#include "platform/qt/menus/menu_widget.h"

#include <QAction>
#include <QIcon>
#include <QKeyEvent>
#include <QMenu>
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

using testing::Each;
using testing::ElementsAre;

class MenuWidgetTest : public testing::Test {
 protected:
  void fill(std::vector<MenuEntry> entries) {
    fillMenu(widget_, Menu{.title = "", .entries = std::move(entries)},
             {.mainQueue = queues_.mainQueue(), .choose = [](const ActionEntry&) {}});
  }

  static std::vector<QColor> iconColors(const QMenu& menu) {
    std::vector<QColor> colors;
    for (const QAction* const action : menu.actions()) {
      colors.push_back(action->icon().pixmap(QSize(16, 16)).toImage().pixelColor(8, 8));
    }
    return colors;
  }

  /// Whether a square of that colour is in the left half, where icons are.
  static bool shows(const QImage& row, const QColor& color) {
    int count = 0;
    for (int y = 0; y < row.height(); ++y) {
      for (int x = 0; x < row.width() / 2; ++x) count += row.pixelColor(x, y) == color;
    }
    return count >= 200;
  }

  MemoryTaskQueues queues_;
  ScrollingMenu widget_;
};

TEST_F(MenuWidgetTest, ATabInATitleIsNoShortcut) {
  fill({commandEntry("One\ttwo", "1")});
  EXPECT_EQ(widget_.actions().front()->text(), "One two");
}

TEST_F(MenuWidgetTest, HiddenCharactersOfATitleAreShown) {
  fill({commandEntry("One\ntwo \u202Ethree", "1")});
  EXPECT_EQ(widget_.actions().front()->text(), QStringLiteral("One two ‹U+202E›three"));
}

TEST_F(MenuWidgetTest, AShortcutStandsBesideItsEntry) {
  ActionEntry quit = commandEntry("Quit", "1");
  quit.keyEquivalent = KeyEquivalent{"q"};
  fill({quit});
  EXPECT_EQ(widget_.actions().front()->text(), "Quit\t⌘Q");
}

TEST_F(MenuWidgetTest, AnAmpersandIsAKeyLikeOthers) {
  ActionEntry entry = commandEntry("Title", "1");
  entry.keyEquivalent = KeyEquivalent{"&", modifiers::control};
  fill({entry});
  EXPECT_EQ(withoutMnemonics(widget_.actions().front()->text()), "Title\t⌃&");
}

TEST_F(MenuWidgetTest, AMixedStateHasACheckMark) {
  ActionEntry entry = commandEntry("Title", "1");
  entry.state = ControlState::mixed;
  fill({entry});
  EXPECT_TRUE(widget_.actions().front()->isChecked());
}

TEST_F(MenuWidgetTest, AnIconThatIsNotThereLeavesTheEntryWithoutOne) {
  ActionEntry action = commandEntry("Run", "1");
  action.image = Image{.name = "no-such-icon", .isTemplate = true, .pointSize = {}, .weight = {}};
  fill({action});
  EXPECT_TRUE(widget_.actions().front()->icon().isNull());
}

TEST_F(MenuWidgetTest, OnlyTemplatesTakeTheColourOfTheMenusTexts) {
  IconTheme theme;
  theme.add("square", 16, 1, plainPicture(16, Qt::red));
  ActionEntry colored = commandEntry("Colored", "1");
  colored.image = Image{.name = "square", .isTemplate = false, .pointSize = {}, .weight = {}};
  ActionEntry tinted = commandEntry("Tinted", "2");
  tinted.image = Image{.name = "square", .isTemplate = true, .pointSize = {}, .weight = {}};
  SubmenuEntry folder;
  folder.image = tinted.image;
  fill({colored, tinted, folder});
  const QColor text = widget_.palette().color(QPalette::WindowText);
  EXPECT_THAT(iconColors(widget_), ElementsAre(QColor(Qt::red), text, text));
}

TEST_F(MenuWidgetTest, TheSymbolOfTheSelectedEntryHasTheColourOfItsText) {
  IconTheme theme;
  theme.add("square", 16, 1, plainPicture(16, Qt::red));
  ActionEntry entry = commandEntry("One", "1");
  entry.image = Image{.name = "square", .isTemplate = true, .pointSize = {}, .weight = {}};
  fill({entry, entry});
  QPalette palette = widget_.palette();
  palette.setColor(QPalette::WindowText, Qt::green);
  palette.setColor(QPalette::HighlightedText, Qt::yellow);
  widget_.setPalette(palette);
  widget_.popup(QPoint());
  widget_.setActiveAction(widget_.actions().front());
  const QImage picture = widget_.grab().toImage();
  const QRect first = widget_.actionGeometry(widget_.actions().front());
  const QRect second = widget_.actionGeometry(widget_.actions().back());
  EXPECT_TRUE(shows(picture.copy(first), Qt::yellow));
  EXPECT_FALSE(shows(picture.copy(first), Qt::green));
  EXPECT_TRUE(shows(picture.copy(second), Qt::green));
  widget_.close();
}

TEST_F(MenuWidgetTest, TemplatesHaveTheColourThatTextsHaveWhenTheMenuOpens) {
  IconTheme theme;
  theme.add("square", 16, 1, plainPicture(16, Qt::red));
  ActionEntry action = commandEntry("Tinted", "1");
  action.image = Image{.name = "square", .isTemplate = true, .pointSize = {}, .weight = {}};
  SubmenuEntry folder;
  folder.image = action.image;
  folder.submenu.entries.emplace_back(action);
  fill({action, folder});
  QPalette palette = widget_.palette();
  palette.setColor(QPalette::WindowText, Qt::green);
  for (QMenu* const menu :
       std::initializer_list<QMenu*>{&widget_, widget_.actions().back()->menu()}) {
    menu->setPalette(palette);
    menu->popup(QPoint());
    EXPECT_THAT(iconColors(*menu), Each(QColor(Qt::green)));
  }
  widget_.close();
}

TEST_F(MenuWidgetTest, AMenuThatIsMadeAgainHasTheSameIcons) {
  IconTheme theme;
  theme.add("block", 16, 1, plainPicture(16, Qt::red));
  ActionEntry action = commandEntry("Run", "1");
  action.image = Image{.name = "block", .isTemplate = true, .pointSize = {}, .weight = {}};
  fill({action, action});
  const QIcon first = widget_.actions().at(0)->icon();
  ASSERT_FALSE(first.isNull());
  EXPECT_EQ(first.cacheKey(), widget_.actions().at(1)->icon().cacheKey());
}

}  // namespace
}  // namespace quillmar
