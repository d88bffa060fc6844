// What only a real keyboard does, and a real clipboard.

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QWindow>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <xkbcommon/xkbcommon-keysyms.h>

#include "platform/widgets/button.h"
#include "platform/widgets/label.h"
#include "platform/widgets/scroll_view.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "tests/key_presses.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const std::map<Qt::Key, quint32> keysyms = {{Qt::Key_Return, XKB_KEY_Return},
                                            {Qt::Key_Enter, XKB_KEY_KP_Enter},
                                            {Qt::Key_Space, XKB_KEY_space},
                                            {Qt::Key_Escape, XKB_KEY_Escape}};

class KeyboardTest : public testing::Test {
 protected:
  Button& addButton(const std::string& title, const KeyEquivalent& key) {
    auto& button = column.add<Button>(title);
    button.setKeyEquivalent(key);
    button.setOnPress([this, title] { pressed.push_back(title); });
    return button;
  }

  void show() {
    ASSERT_TRUE(window.show({}));
    user.settle();
  }

  /// A press and a release as they come from the desktop, which repeats them while the key is held
  /// down.
  void press(const View& view, Qt::Key key, bool isRepeated) {
    QWidget& widget = widgetOf(view);
    widget.setFocus();
    const quint32 keysym = keysyms.at(key);
    QKeyEvent down(QEvent::KeyPress, key, Qt::NoModifier, 0, keysym, 0, QString(), isRepeated);
    QApplication::sendEvent(widget.window()->windowHandle(), &down);
    QKeyEvent up(QEvent::KeyRelease, key, Qt::NoModifier, 0, keysym, 0, QString(), isRepeated);
    QApplication::sendEvent(widget.window()->windowHandle(), &up);
  }

  QtUser user;
  std::vector<std::string> pressed;
  Window window{user.windows()};
  StackView& column = window.setContent<StackView>(Orientation::vertical);
};

TEST_F(KeyboardTest, AWindowThatGetsTheKeyboardBelowItsSheetsPassesItOn) {
  Window sheet(user.windows());
  Window details(user.windows());
  show();
  ASSERT_TRUE(window.beginSheet(sheet, {}));
  ASSERT_TRUE(sheet.beginSheet(details, {}));
  user.settle();
  for (Window* const front : {&details, &sheet}) {
    QApplication::setActiveWindow(&widgetOf(window));
    handleEventsUntil([&] { return QApplication::activeWindow() == &widgetOf(*front); });
    front->close();
  }
}

TEST_F(KeyboardTest, AKeyThatIsHeldDownPressesNoButton) {
  auto& cancel = addButton("Cancel", keys::escape);
  auto& run = addButton("Run", keys::returnKey);
  show();
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape}) {
    press(run, key, true);
    press(cancel, key, true);
  }
  EXPECT_THAT(pressed, IsEmpty());
  press(run, Qt::Key_Return, false);
  EXPECT_THAT(pressed, ElementsAre("Run"));
}

TEST_F(KeyboardTest, AKeyThatIsHeldDownInAFieldAnswersNothing) {
  auto& field = column.add<TextField>();
  addButton("Cancel", keys::escape);
  addButton("Run", keys::returnKey);
  show();
  press(field, Qt::Key_Return, true);
  press(field, Qt::Key_Escape, true);
  EXPECT_THAT(pressed, IsEmpty());
  press(field, Qt::Key_Return, false);
  EXPECT_THAT(pressed, ElementsAre("Run"));
}

TEST_F(KeyboardTest, PastedLinesBecomeOneAndTheCursorStaysBehindThem) {
  auto& field = column.add<TextField>();
  field.setText("<>");
  window.makeFirstResponder(&field);
  show();
  auto& line = static_cast<QLineEdit&>(widgetOf(field));
  line.setCursorPosition(1);
  QApplication::clipboard()->setText("one\ntwo");
  line.paste();
  EXPECT_EQ(field.text(), "<one two>");
  EXPECT_EQ(line.text(), "<one two>");
  EXPECT_EQ(line.cursorPosition(), 8);
}

TEST_F(KeyboardTest, PageKeysScrollTextThatIsTooLong) {
  std::string lines;
  for (int i = 0; i < 500; ++i) lines += "line\n";
  auto& scrollView = column.add<ScrollView>(std::make_unique<Label>(lines));
  auto& run = addButton("Run", keys::returnKey);
  window.makeFirstResponder(&run);
  show();
  const QScrollBar& bar = *static_cast<QScrollArea&>(widgetOf(scrollView)).verticalScrollBar();
  ASSERT_GT(bar.maximum(), 0);
  user.pressKey(window, pressOf(keys::pageDown));
  EXPECT_EQ(bar.value(), bar.pageStep());
  user.pressKey(window, pressOf(keys::end));
  EXPECT_EQ(bar.value(), bar.maximum());
  user.pressKey(window, pressOf(keys::pageUp));
  EXPECT_EQ(bar.value(), bar.maximum() - bar.pageStep());
  user.pressKey(window, pressOf(keys::home));
  EXPECT_EQ(bar.value(), 0);
}

TEST_F(KeyboardTest, ASpaceInARowLeavesTheRowAsLowAsItsButtons) {
  window.setContentSize({.width = 300, .height = 200});
  column.add<Label>("Text");
  auto& row = column.add<StackView>(Orientation::horizontal);
  row.add<FlexibleSpace>();
  auto& button = row.add<Button>("Button");
  show();
  EXPECT_EQ(widgetOf(row).height(), widgetOf(button).height());
}

}  // namespace
}  // namespace quillmar
