// Texts that the user selects with the pointer and copies.

#include <QApplication>
#include <QClipboard>
#include <QContextMenuEvent>
#include <QMenu>
#include <QStyleHints>
#include <QTest>
#include <QWindow>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/qt/widgets/text_widget.h"
#include "platform/widgets/label.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/pictures.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

const KeyEquivalent copy{"c", modifiers::control};
const KeyEquivalent selectAll{"a", modifiers::control};

class SelectableLabelTest : public WidgetsFixture<QtUser> {
 protected:
  SelectableLabelTest() : label(stack->add<Label>("one two three", Font::system(26))) {
    label.setSelectable(true);
    QGuiApplication::clipboard()->setText("before");
  }

  TextWidget& text() { return static_cast<TextWidget&>(widgetOf(label)); }
  std::string selected() { return text().selectedText().toStdString(); }
  static std::string copied() { return QGuiApplication::clipboard()->text().toStdString(); }
  void press(const KeyEquivalent& key) { harness.pressKey(*window, pressOf(key)); }

  /// Just before the character of the text's first line.
  QPoint before(int character) {
    const QString line = text().text().left(character);
    return {text().fontMetrics().horizontalAdvance(line), text().fontMetrics().height() / 2};
  }
  void hold(const QPoint& at, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
    QTest::mousePress(handle(), Qt::LeftButton, modifiers, inWindow(at));
  }
  void moveTo(const QPoint& at) { QTest::mouseMove(handle(), inWindow(at)); }
  void letGo(const QPoint& at) {
    QTest::mouseRelease(handle(), Qt::LeftButton, Qt::NoModifier, inWindow(at));
  }
  void drag(int from, int to) {
    hold(before(from));
    moveTo(before(to));
    letGo(before(to));
  }
  /// The entry of the menu that a click with the right button opens.
  QAction* entryOfMenu(const QString& title) {
    delete text().findChild<QMenu*>();
    QContextMenuEvent event(QContextMenuEvent::Mouse, before(1), text().mapToGlobal(before(1)));
    QCoreApplication::sendEvent(&text(), &event);
    const auto* const menu = text().findChild<QMenu*>();
    if (menu == nullptr) return nullptr;
    for (QAction* const action : menu->actions()) {
      if (action->text() == title) return action;
    }
    return nullptr;
  }

  Label& label;

 private:
  QWindow* handle() { return text().window()->windowHandle(); }
  QPoint inWindow(const QPoint& at) { return text().mapTo(text().window(), at); }
};

TEST_F(SelectableLabelTest, APartThatIsSelectedWithThePointerIsCopied) {
  show();
  drag(4, 7);
  EXPECT_EQ(selected(), "two");
  EXPECT_EQ(copied(), "before");
  press(copy);
  EXPECT_EQ(copied(), "two");
}

TEST_F(SelectableLabelTest, TextCanBeSelectedBackwards) {
  show();
  drag(7, 0);
  EXPECT_EQ(selected(), "one two");
}

TEST_F(SelectableLabelTest, AClickWithShiftMovesTheEndOfTheSelection) {
  show();
  drag(4, 5);
  hold(before(13), Qt::ShiftModifier);
  letGo(before(13));
  EXPECT_EQ(selected(), "two three");
}

TEST_F(SelectableLabelTest, AClickSelectsNothingAndCopiesNothing) {
  show();
  drag(4, 7);
  harness.click(label);
  EXPECT_EQ(selected(), "");
  press(copy);
  EXPECT_EQ(copied(), "before");
}

TEST_F(SelectableLabelTest, ADoubleClickSelectsAWord) {
  show();
  QTest::mouseDClick(&text(), Qt::LeftButton, Qt::NoModifier, before(5));
  EXPECT_EQ(selected(), "two");
}

TEST_F(SelectableLabelTest, AThirdClickSelectsTheWholeTextAndALaterOneNothing) {
  show();
  const auto send = [&](QEvent::Type type, quint64 milliseconds) {
    QMouseEvent event(type, before(5), text().mapToGlobal(before(5)), Qt::LeftButton,
                      Qt::LeftButton, Qt::NoModifier);
    event.setTimestamp(milliseconds);
    QCoreApplication::sendEvent(&text(), &event);
  };
  const auto interval =
      static_cast<quint64>(QGuiApplication::styleHints()->mouseDoubleClickInterval());
  send(QEvent::MouseButtonDblClick, 1000);
  send(QEvent::MouseButtonPress, 1000 + interval);
  EXPECT_EQ(selected(), text().text().toStdString());
  send(QEvent::MouseButtonDblClick, 5000);
  send(QEvent::MouseButtonPress, 5000 + interval + 1);
  EXPECT_EQ(selected(), "");
}

TEST_F(SelectableLabelTest, ControlASelectsTheWholeText) {
  label.setText("first line\nsecond <b>line</b> & more");
  show();
  harness.click(label);
  press(selectAll);
  press(copy);
  EXPECT_EQ(copied(), "first line\nsecond <b>line</b> & more");
}

TEST_F(SelectableLabelTest, ASelectionMayBeginInOneLineAndEndInAnother) {
  label.setText("one\ntwo");
  show();
  hold(before(1));
  moveTo(before(1) + QPoint(0, text().fontMetrics().lineSpacing()));
  letGo(before(1) + QPoint(0, text().fontMetrics().lineSpacing()));
  EXPECT_EQ(selected(), "ne\nt");
}

TEST_F(SelectableLabelTest, TheSelectionIsSeen) {
  show();
  const QColor highlight = QApplication::palette().color(QPalette::Active, QPalette::Highlight);
  const auto shows = [this](const QColor& color) {
    const QImage picture = pictureOf(label);
    for (int x = 0; x < picture.width(); ++x) {
      if (picture.pixelColor(x, picture.height() / 2) == color) return true;
    }
    return false;
  };
  EXPECT_FALSE(shows(highlight));
  drag(0, 13);
  EXPECT_TRUE(shows(highlight));
}

TEST_F(SelectableLabelTest, ATextThatChangesIsNoLongerSelected) {
  show();
  drag(4, 13);
  label.setText("short");
  harness.settle();
  EXPECT_EQ(selected(), "");
  press(copy);
  EXPECT_EQ(copied(), "before");
}

TEST_F(SelectableLabelTest, TheMenuOfTheTextCopiesAndSelects) {
  show();
  QAction* const disabled = entryOfMenu("Copy");
  ASSERT_NE(disabled, nullptr);
  EXPECT_FALSE(disabled->isEnabled());
  entryOfMenu("Select All")->trigger();
  EXPECT_EQ(selected(), "one two three");
  QAction* const enabled = entryOfMenu("Copy");
  ASSERT_NE(enabled, nullptr);
  EXPECT_TRUE(enabled->isEnabled());
  enabled->trigger();
  EXPECT_EQ(copied(), "one two three");
}

TEST_F(SelectableLabelTest, ATextThatIsNotSelectableStaysAsItIs) {
  label.setSelectable(false);
  show();
  drag(4, 7);
  EXPECT_EQ(selected(), "");
  press(selectAll);
  press(copy);
  EXPECT_EQ(copied(), "before");
  EXPECT_EQ(entryOfMenu("Copy"), nullptr);
}

}  // namespace
}  // namespace quillmar
