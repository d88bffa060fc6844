// What the keyboard and input methods do to a field, and what the model hears of it.

#include <QApplication>
#include <QInputMethodEvent>
#include <QLineEdit>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/text_field.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

const KeyEquivalent redo{"z", modifiers::control | modifiers::shift};

class TextFieldEditingTest : public WidgetsFixture<QtUser> {
 protected:
  TextFieldEditingTest() : field(addField("")) { window->makeFirstResponder(&field); }
  ~TextFieldEditingTest() override { QApplication::setFont(font_); }

  QLineEdit& line() { return static_cast<QLineEdit&>(widgetOf(field)); }
  void type(const std::string& text) {
    harness.typeAtFocus(*window, text);
    harness.settle();
  }
  void press(const KeyEquivalent& key) {
    harness.pressKey(*window, pressOf(key));
    harness.settle();
  }
  /// As an input method does, while a text is composed and when it is accepted.
  void compose(const QString& text) { input(text, {}); }
  void commit(const QString& text) { input({}, text); }
  void expectText(const std::string& text) {
    EXPECT_EQ(field.text(), text);
    EXPECT_EQ(harness.textOnScreen(field), text);
  }

  TextField& field;

 private:
  void input(const QString& composed, const QString& committed) {
    QInputMethodEvent event(composed, {});
    event.setCommitString(committed);
    QCoreApplication::sendEvent(QApplication::focusObject(), &event);
    harness.settle();
  }

  const QFont font_ = QApplication::font();
};

TEST_F(TextFieldEditingTest, ControlZUndoesAndControlShiftZRedoes) {
  show();
  type("abc");
  press(undo);
  expectText("");
  press(redo);
  expectText("abc");
  EXPECT_EQ(edits.back(), "abc");
}

TEST_F(TextFieldEditingTest, EachUndoIsOneEdit) {
  field.setText("first");
  show();
  harness.typeText(field, "!");
  edits.clear();
  press(undo);
  EXPECT_THAT(edits, ElementsAre("first"));
  press(undo);
  press(undo);
  EXPECT_THAT(edits, ElementsAre("first"));
  press(redo);
  EXPECT_THAT(edits, ElementsAre("first", "first!"));
}

TEST_F(TextFieldEditingTest, WhatWasTypedBeforeTheWindowChangedCanBeUndone) {
  show();
  type("abc");
  field.setPlaceholder("Name");
  QApplication::setFont(QFont(QApplication::font().family(), 20));
  harness.settle();
  press(undo);
  expectText("");
}

TEST_F(TextFieldEditingTest, AChangeOfItsLooksLeavesTheCursorWhereItIs) {
  field.setText("ac");
  show();
  line().setCursorPosition(1);
  field.setFont(Font::boldSystem(20));
  harness.settle();
  type("b");
  expectText("abc");
}

TEST_F(TextFieldEditingTest, AReadOnlyFieldUndoesNothing) {
  show();
  type("abc");
  field.setEditable(false);
  edits.clear();
  press(undo);
  expectText("abc");
  EXPECT_THAT(edits, IsEmpty());
}

TEST_F(TextFieldEditingTest, WhatAnInputMethodCommitsReachesTheModelOnce) {
  show();
  commit("日本");
  expectText("日本");
  EXPECT_THAT(edits, ElementsAre("日本"));
  commit("語");
  EXPECT_THAT(edits, ElementsAre("日本", "日本語"));
}

TEST_F(TextFieldEditingTest, UncommittedInputIsNotReported) {
  field.setText("a");
  show();
  line().setCursorPosition(1);
  compose("に");
  compose("にほ");
  EXPECT_EQ(field.text(), "a");
  EXPECT_THAT(edits, IsEmpty());
  commit("日本");
  expectText("a日本");
  EXPECT_THAT(edits, ElementsAre("a日本"));
}

TEST_F(TextFieldEditingTest, ACommitOfAReadOnlyFieldChangesNothing) {
  field.setText("fixed");
  field.setEditable(false);
  show();
  commit("日本");
  expectText("fixed");
  EXPECT_THAT(edits, IsEmpty());
}

TEST_F(TextFieldEditingTest, ACommitMayDestroyItsOwnWindow) {
  field.setOnEdit([this](const std::string&) { window.reset(); });
  show();
  commit("日本");
  EXPECT_EQ(window, nullptr);
}

TEST_F(TextFieldEditingTest, TheFirstResponderShowsItsTextSelected) {
  field.setText("before");
  show();
  type("x");
  expectText("x");
}

TEST_F(TextFieldEditingTest, AnUnfocusedFieldShowsTheStartOfALongText) {
  TextField& other = addField(std::string(500, 'x'));
  show();
  EXPECT_EQ(static_cast<QLineEdit&>(widgetOf(other)).cursorPosition(), 0);
  other.setText(std::string(600, 'y'));
  harness.settle();
  EXPECT_EQ(static_cast<QLineEdit&>(widgetOf(other)).cursorPosition(), 0);
}

TEST_F(TextFieldEditingTest, ALongTextIsNotCut) {
  show();
  const std::string text(100000, 'x');
  commit(QString::fromStdString(text));
  EXPECT_EQ(field.text(), text);
}

}  // namespace
}  // namespace quillmar
