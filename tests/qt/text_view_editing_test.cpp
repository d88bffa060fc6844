// What the toolkit does by itself in a view for several lines of text, and the model must not
// disturb.

#include <QApplication>
#include <QClipboard>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/text_view.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

class TextViewEditingTest : public WidgetsFixture<QtUser> {
 protected:
  TextViewEditingTest() : view(stack->add<TextView>()) {
    view.setOnEdit([this](const std::string& edited) { edits.push_back(edited); });
    view.setHeight(90);
    view.setWidth(370);
    window->makeFirstResponder(&view);
  }

  QPlainTextEdit& edit() { return dynamic_cast<QPlainTextEdit&>(widgetOf(view)); }
  void pressControl(const std::string& character) {
    harness.pressKey(*window,
                     pressOf({.character = character, .modifierMask = modifiers::control}));
  }

  TextView& view;
};

TEST_F(TextViewEditingTest, ControlZTakesWhatWasTypedBack) {
  show();
  harness.typeAtFocus(*window, "abc");
  view.setFont({.size = 11, .monospaced = true});
  harness.settle();
  pressControl("z");
  EXPECT_EQ(view.text(), "");
  EXPECT_EQ(edits.back(), "");
}

TEST_F(TextViewEditingTest, LooksThatChangeAreNoEdit) {
  view.setText("abc");
  show();
  view.setFont({.size = 20, .monospaced = true});
  view.setEnabled(false);
  harness.settle();
  EXPECT_THAT(edits, testing::IsEmpty());
}

TEST_F(TextViewEditingTest, FormattedTextIsPastedPlain) {
  auto* const copied = new QMimeData;
  copied->setHtml(QStringLiteral("<b>bold</b>"));
  copied->setText(QStringLiteral("bold"));
  QApplication::clipboard()->setMimeData(copied);
  show();
  pressControl("v");
  EXPECT_EQ(view.text(), "bold");
  EXPECT_FALSE(edit().textCursor().charFormat().font().bold());
}

TEST_F(TextViewEditingTest, ALongLineWrapsAndManyLinesScroll) {
  std::string text(500, 'x');
  for (int i = 0; i < 20; ++i) text += "\nline";
  view.setText(text);
  show();
  EXPECT_EQ(edit().size(), QSize(370, 90));
  EXPECT_EQ(edit().horizontalScrollBar()->maximum(), 0);
  EXPECT_GT(edit().verticalScrollBar()->maximum(), 20);
}

TEST_F(TextViewEditingTest, ACorrectionLeavesTheCursorWhereItIs) {
  view.setText("ac");
  view.setOnEdit([this](const std::string& text) { view.setText(text + "!"); });
  show();
  QTextCursor cursor = edit().textCursor();
  cursor.setPosition(1);
  edit().setTextCursor(cursor);
  harness.typeAtFocus(*window, "b");
  harness.settle();
  EXPECT_EQ(view.text(), "abc!");
  EXPECT_EQ(edit().textCursor().position(), 2);
}

}  // namespace
}  // namespace quillmar
