// Clicks on windows that the user cannot have read yet.

#include <QApplication>
#include <QDeadlineTimer>
#include <QElapsedTimer>
#include <QLineEdit>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QWindow>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/button.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "tests/key_presses.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

/// Longer than any test takes.
constexpr int never = 10 * 60 * 1000;
constexpr int interval = 50;

/// Counts what a window gets of the mouse.
class MouseEvents final : public QObject {
 public:
  explicit MouseEvents(const Window& window) {
    widgetOf(window).windowHandle()->installEventFilter(this);
  }
  bool eventFilter(QObject* /*watched*/, QEvent* event) override {
    if (dynamic_cast<QMouseEvent*>(event) != nullptr) ++count;
    return false;
  }

  int count = 0;
};

class EarlyClickFilterTest : public testing::Test {
 protected:
  struct Panel {
    Panel(EarlyClickFilterTest& test, const std::string& name)
        : window(test.user.windows()),
          column(window.setContent<StackView>(Orientation::vertical)),
          field(column.add<TextField>()),
          run(column.add<Button>("Run")) {
      window.setIgnoresEarlyClicks(true);
      field.setText("some text");
      run.setOnPress([&test, name] { test.pressed.push_back(name); });
    }

    Window window;
    StackView& column;
    TextField& field;
    Button& run;
  };

  ~EarlyClickFilterTest() override { QApplication::setDoubleClickInterval(0); }

  void show(Panel& panel) {
    ASSERT_TRUE(panel.window.show({}));
    user.settle();
  }

  static void send(QWidget& widget, QEvent::Type type, std::uint64_t time) {
    QWidget& top = *widget.window();
    const QPoint at = widget.mapTo(&top, widget.rect().center());
    const Qt::MouseButtons held =
        type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
    QMouseEvent event(type, at, top.mapToGlobal(at), Qt::LeftButton, held, Qt::NoModifier);
    event.setTimestamp(time);
    QApplication::sendEvent(top.windowHandle(), &event);
  }

  /// At a time of the display's clock, in milliseconds.
  static void click(QWidget& widget, std::uint64_t time) {
    send(widget, QEvent::MouseButtonPress, time);
    send(widget, QEvent::MouseButtonRelease, time);
  }

  /// Clicks until the window takes notice. Answers the time of that click.
  std::uint64_t clickUntilHeard(const Panel& panel) {
    std::uint64_t time = 0;
    pressed.clear();
    const QDeadlineTimer deadline(never);
    while (pressed.empty() && !deadline.hasExpired()) click(widgetOf(panel.run), time += 1000);
    pressed.clear();
    return time;
  }

  QtUser user;
  std::vector<std::string> pressed;
};

TEST_F(EarlyClickFilterTest, APressRightAfterTheWindowCameUpLeavesNoTrace) {
  QApplication::setDoubleClickInterval(never);
  Panel panel(*this, "Run");
  panel.window.makeFirstResponder(&panel.field);
  show(panel);
  const MouseEvents events(panel.window);
  auto& button = dynamic_cast<QPushButton&>(widgetOf(panel.run));
  send(button, QEvent::MouseButtonPress, 1);
  send(button, QEvent::MouseButtonDblClick, 1);
  EXPECT_FALSE(button.isDown());
  send(button, QEvent::MouseButtonRelease, 2);
  EXPECT_EQ(events.count, 0);
  EXPECT_THAT(pressed, IsEmpty());
  EXPECT_EQ(user.focusedOnScreen(panel.window), &panel.field);
}

TEST_F(EarlyClickFilterTest, APressRightAfterTheWindowCameUpPlacesNoCursor) {
  QApplication::setDoubleClickInterval(never);
  Panel panel(*this, "Run");
  panel.window.makeFirstResponder(&panel.run);
  show(panel);
  auto& line = dynamic_cast<QLineEdit&>(widgetOf(panel.field));
  line.setCursorPosition(2);
  click(line, 1);
  EXPECT_EQ(line.cursorPosition(), 2);
  EXPECT_EQ(user.focusedOnScreen(panel.window), &panel.run);
}

TEST_F(EarlyClickFilterTest, ClicksWorkAfterTheInterval) {
  QApplication::setDoubleClickInterval(interval);
  Panel panel(*this, "Run");
  QElapsedTimer sinceShow;
  sinceShow.start();
  show(panel);
  clickUntilHeard(panel);
  EXPECT_GE(sinceShow.elapsed(), interval);
}

TEST_F(EarlyClickFilterTest, AWindowThatComesUpOnceMoreHasToBeReadOnceMore) {
  Panel panel(*this, "Run");
  show(panel);
  clickUntilHeard(panel);
  panel.window.close();
  user.settle();
  show(panel);
  QApplication::setDoubleClickInterval(never);
  click(widgetOf(panel.run), 1'000'000);
  EXPECT_THAT(pressed, IsEmpty());
}

TEST_F(EarlyClickFilterTest, AWindowThatAsksNothingHearsClicksAtOnce) {
  QApplication::setDoubleClickInterval(never);
  Panel panel(*this, "Run");
  panel.window.setIgnoresEarlyClicks(false);
  show(panel);
  click(widgetOf(panel.run), 1);
  EXPECT_THAT(pressed, ElementsAre("Run"));
}

TEST_F(EarlyClickFilterTest, KeysAreHeardAtOnce) {
  QApplication::setDoubleClickInterval(never);
  Panel panel(*this, "Run");
  panel.window.makeFirstResponder(&panel.field);
  panel.run.setKeyEquivalent(keys::returnKey);
  show(panel);
  user.typeAtFocus(panel.window, "typed");
  EXPECT_THAT(panel.field.text(), HasSubstr("typed"));
  user.pressKey(panel.window, pressOf(keys::returnKey));
  EXPECT_THAT(pressed, ElementsAre("Run"));
}

TEST_F(EarlyClickFilterTest, APressRightAfterOneInAnotherWindowDoesNothing) {
  QApplication::setDoubleClickInterval(interval);
  Panel first(*this, "First");
  Panel second(*this, "Second");
  show(first);
  show(second);
  clickUntilHeard(first);
  const std::uint64_t time = clickUntilHeard(second) + interval;
  click(widgetOf(first.run), time);
  click(widgetOf(second.run), time + interval - 2);
  click(widgetOf(second.run), time + interval - 1);
  EXPECT_THAT(pressed, ElementsAre("First"));
  click(widgetOf(second.run), time + interval);
  EXPECT_THAT(pressed, ElementsAre("First", "Second"));
}

TEST_F(EarlyClickFilterTest, APressRightAfterOneInTheSameWindowWorks) {
  QApplication::setDoubleClickInterval(interval);
  Panel panel(*this, "Run");
  show(panel);
  const std::uint64_t time = clickUntilHeard(panel) + interval;
  click(widgetOf(panel.run), time);
  click(widgetOf(panel.run), time + 1);
  EXPECT_THAT(pressed, ElementsAre("Run", "Run"));
}

TEST_F(EarlyClickFilterTest, MenusAreHeardAtOnceAndAPressRightAfterOneInThemDoesNothing) {
  QApplication::setDoubleClickInterval(interval);
  Panel panel(*this, "Run");
  show(panel);
  const std::uint64_t time = clickUntilHeard(panel) + interval;
  QMenu menu;
  menu.addAction("Entry", [this] { pressed.emplace_back("Entry"); });
  menu.popup({});
  user.settle();
  QApplication::setDoubleClickInterval(never);
  click(menu, time);
  EXPECT_THAT(pressed, ElementsAre("Entry"));
  QApplication::setDoubleClickInterval(interval);
  click(widgetOf(panel.run), time + interval - 1);
  EXPECT_THAT(pressed, ElementsAre("Entry"));
  click(widgetOf(panel.run), time + interval);
  EXPECT_THAT(pressed, ElementsAre("Entry", "Run"));
}

}  // namespace
}  // namespace quillmar
