// A text view that shows invisible characters as marks: what is copied, and what its lines look
// like.

#include <QAccessible>
#include <QApplication>
#include <QClipboard>
#include <QMenu>
#include <QPlainTextEdit>
#include <QTest>
#include <QTextBlock>
#include <QTextLayout>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/text_view.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

class TextViewMarksTest : public WidgetsFixture<QtUser> {
 protected:
  TextViewMarksTest() : view(stack->add<TextView>()) {
    view.setEditable(false);
    view.setShowsInvisibleCharacters(true);
    view.setFont({.size = 11, .monospaced = true});
    view.setHeight(300);
    view.setWidth(520);
    window->makeFirstResponder(&view);
  }

  QPlainTextEdit& edit() { return dynamic_cast<QPlainTextEdit&>(widgetOf(view)); }
  void press(const KeyEquivalent& key) { harness.pressKey(*window, pressOf(key)); }
  void pressControl(const std::string& character) {
    press({.character = character, .modifierMask = modifiers::control});
  }
  std::string copied() { return QApplication::clipboard()->text().toStdString(); }

  TextView& view;
};

TEST_F(TextViewMarksTest, EverythingIsCopiedAsItWas) {
  const std::string text = "größer 😀\u202e\n\t\u200b\u00a0\ufffc\r\n\u2028\U000e0041end\n";
  view.setText(text);
  show();
  pressControl("a");
  pressControl("c");
  EXPECT_EQ(copied(), text);
  EXPECT_EQ(QApplication::clipboard()->mimeData()->formats(), QStringList("text/plain"));
}

TEST_F(TextViewMarksTest, ASelectionByKeyboardIsCopiedAsItWas) {
  view.setText("ä\u202eb");
  show();
  const KeyEquivalent extend{.character = keys::right.character, .modifierMask = modifiers::shift};
  press(extend);
  press(extend);
  EXPECT_EQ(edit().textCursor().selectedText(), QStringLiteral("ä‹"));
  pressControl("c");
  EXPECT_EQ(copied(), "ä\u202e");
}

TEST_F(TextViewMarksTest, TheContextMenuCopiesTheOriginalText) {
  view.setText("a\u200bb");
  show();
  edit().selectAll();
  QContextMenuEvent request(QContextMenuEvent::Mouse, QPoint(5, 5), QPoint(5, 5));
  qApp->notify(edit().viewport(), &request);
  auto* const menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
  ASSERT_NE(menu, nullptr);
  for (QAction* const action : menu->actions()) {
    if (action->objectName() == QStringLiteral("edit-copy")) action->trigger();
  }
  menu->close();
  EXPECT_EQ(copied(), "a\u200bb");
}

TEST_F(TextViewMarksTest, AScreenReaderReadsTheMarks) {
  view.setText("a\u202eb");
  show();
  EXPECT_EQ(harness.valueForScreenReaders(view), "a‹U+202E›b");
}

TEST_F(TextViewMarksTest, ALineThatContinuesAWrappedOneHasABarBesideIt) {
  view.setText("first\n" + std::string(200, 'x') + "\nlast");
  show();
  const QImage shown = edit().viewport()->grab().toImage();
  const int line = edit().fontMetrics().lineSpacing();
  const auto margin = [&](int number) {
    // The middle of the left margin, which no text reaches.
    return shown.pixelColor(static_cast<int>(edit().document()->documentMargin() / 2),
                            line * number + line / 2 + 4);
  };
  const QColor background = edit().palette().color(QPalette::Base);
  EXPECT_EQ(margin(0), background);
  EXPECT_EQ(margin(1), background);
  EXPECT_NE(margin(2), background);
  const int lines = 2 + edit().document()->findBlockByNumber(1).layout()->lineCount();
  EXPECT_NE(margin(lines - 2), background);
  EXPECT_EQ(margin(lines - 1), background);
}

}  // namespace
}  // namespace quillmar
