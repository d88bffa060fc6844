// What only a real keyboard does, and a real clipboard.

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QLineEdit>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/button.h"
#include "platform/widgets/label.h"
#include "platform/widgets/scroll_view.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

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

  /// A press as the desktop repeats it while the key is held down.
  void repeat(const View& view, Qt::Key key) {
    QKeyEvent press(QEvent::KeyPress, key, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(&widgetOf(view), &press);
    QKeyEvent release(QEvent::KeyRelease, key, Qt::NoModifier, QString(), true);
    QApplication::sendEvent(&widgetOf(view), &release);
  }

  QtUser user;
  std::vector<std::string> pressed;
  Window window{user.windows()};
  StackView& column = window.setContent<StackView>(Orientation::vertical);
};

TEST_F(KeyboardTest, AKeyThatIsHeldDownPressesNoButton) {
  auto& cancel = addButton("Cancel", keys::escape);
  auto& run = addButton("Run", keys::returnKey);
  show();
  for (const Qt::Key key : {Qt::Key_Return, Qt::Key_Enter, Qt::Key_Space, Qt::Key_Escape}) {
    repeat(run, key);
    repeat(cancel, key);
  }
  EXPECT_THAT(pressed, IsEmpty());
  QTest::keyClick(&widgetOf(run), Qt::Key_Return);
  EXPECT_THAT(pressed, ElementsAre("Run"));
}

TEST_F(KeyboardTest, AKeyThatIsHeldDownInAFieldAnswersNothing) {
  auto& field = column.add<TextField>();
  addButton("Cancel", keys::escape);
  addButton("Run", keys::returnKey);
  show();
  repeat(field, Qt::Key_Return);
  repeat(field, Qt::Key_Escape);
  EXPECT_THAT(pressed, IsEmpty());
  QTest::keyClick(&widgetOf(field), Qt::Key_Return);
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
  QTest::keyClick(&widgetOf(run), Qt::Key_PageDown);
  EXPECT_EQ(bar.value(), bar.pageStep());
  QTest::keyClick(&widgetOf(run), Qt::Key_End);
  EXPECT_EQ(bar.value(), bar.maximum());
  QTest::keyClick(&widgetOf(run), Qt::Key_PageUp);
  EXPECT_EQ(bar.value(), bar.maximum() - bar.pageStep());
  QTest::keyClick(&widgetOf(run), Qt::Key_Home);
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
