// Content that is too tall for its window, or for the screen.

#include <QApplication>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
#include <QTest>
#include <QWheelEvent>
#include <QWidget>
#include <QWindow>
#include <memory>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/button.h"
#include "platform/widgets/label.h"
#include "platform/widgets/scroll_view.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

std::string lines(int count) {
  std::string text;
  for (int i = 0; i < count; ++i) text += "line " + std::to_string(i) + "\n";
  return text;
}

class ScrollingTest : public WidgetsFixture<QtUser> {
 protected:
  ScrollingTest() {
    window->setContentSize({.width = 300, .height = 0});
    auto content = std::make_unique<Label>("Text");
    content->setWraps(true);
    label = content.get();
    scroll = &stack->add<ScrollView>(std::move(content));
    button = &addButton("Below");
  }

  QScrollBar& bar() { return *static_cast<QScrollArea&>(widgetOf(*scroll)).verticalScrollBar(); }
  static QRect room() { return QGuiApplication::primaryScreen()->availableGeometry(); }
  static QRect inWindow(const View& view) {
    const QWidget& widget = widgetOf(view);
    return {widget.mapTo(widget.window(), QPoint(0, 0)), widget.size()};
  }

  Label* label;
  ScrollView* scroll;
  Button* button;
};

TEST_F(ScrollingTest, WhatHasRoomIsShownWholeWithoutABar) {
  label->setText(lines(10));
  show();
  EXPECT_FALSE(bar().isVisible());
  EXPECT_EQ(bar().maximum(), 0);
  EXPECT_EQ(widgetOf(*scroll).height(), widgetOf(*label).height());
  EXPECT_EQ(widgetOf(*label).width(), 300);
}

TEST_F(ScrollingTest, TooTallContentScrollsInAWindowThatFitsTheScreen) {
  label->setText(lines(500));
  show();
  EXPECT_LE(widgetOf(*window).frameGeometry().height(), room().height());
  EXPECT_GT(widgetOf(*window).height(), room().height() / 2);
  EXPECT_TRUE(bar().isVisible());
  EXPECT_EQ(bar().maximum(), widgetOf(*label).height() - widgetOf(*scroll).height());
  EXPECT_GE(widgetOf(*label).height(), 500 * widgetOf(*label).fontMetrics().height());
}

TEST_F(ScrollingTest, WhatStandsBelowTooTallContentStaysInTheWindow) {
  label->setText(lines(500));
  show();
  EXPECT_TRUE(widgetOf(*window).rect().contains(inWindow(*button)));
  EXPECT_EQ(widgetOf(*button).height(), widgetOf(*button).sizeHint().height());
  harness.click(*button);
  EXPECT_THAT(pressed, testing::ElementsAre("Below"));
}

TEST_F(ScrollingTest, TheBarTakesItsRoomFromTheText) {
  label->setText(std::string(20000, 'x'));
  show();
  ASSERT_TRUE(bar().isVisible());
  EXPECT_EQ(widgetOf(*label).width() + bar().width(), 300);
}

TEST_F(ScrollingTest, TheWheelScrolls) {
  label->setText(lines(500));
  show();
  ASSERT_EQ(bar().value(), 0);
  QWindow* const handle = widgetOf(*window).windowHandle();
  const QPointF place(10, 10);
  QWheelEvent event(place, handle->mapToGlobal(place), QPoint(), QPoint(0, -120), Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  // Only a user's event is passed on from a widget that doesn't want it.
  QSpontaneKeyEvent::setSpontaneous(&event);
  qApp->notify(handle, &event);
  EXPECT_GT(bar().value(), 0);
  EXPECT_LT(inWindow(*label).top(), 0);
}

TEST_F(ScrollingTest, AContentThatGrowsAndShrinksTakesItsWindowAlong) {
  show();
  const QSize before = widgetOf(*window).size();
  label->setText(lines(500));
  harness.settle();
  EXPECT_TRUE(bar().isVisible());
  EXPECT_LE(widgetOf(*window).frameGeometry().height(), room().height());
  EXPECT_TRUE(room().contains(widgetOf(*window).geometry()));
  label->setText("Text");
  harness.settle();
  EXPECT_FALSE(bar().isVisible());
  EXPECT_EQ(widgetOf(*window).size(), before);
}

TEST_F(ScrollingTest, AStatedHeightIsKeptWhateverTheContentNeeds) {
  scroll->setHeight(150);
  show();
  EXPECT_EQ(widgetOf(*scroll).height(), 150);
  EXPECT_EQ(bar().maximum(), 0);
  label->setText(lines(40));
  harness.settle();
  EXPECT_EQ(widgetOf(*scroll).height(), 150);
  EXPECT_EQ(bar().maximum(), widgetOf(*label).height() - 150);
}

TEST_F(ScrollingTest, TheViewWithTheFocusIsScrolledIntoSight) {
  auto content = std::make_unique<StackView>(Orientation::vertical);
  TextField& first = content->add<TextField>();
  content->add<Label>(lines(100));
  TextField& last = content->add<TextField>();
  ScrollView& form = stack->add<ScrollView>(std::move(content));
  form.setHeight(150);
  window->makeFirstResponder(&last);
  show();
  const auto isInSight = [&](const View& view) { return inWindow(form).contains(inWindow(view)); };
  EXPECT_TRUE(isInSight(last));
  window->makeFirstResponder(&first);
  EXPECT_TRUE(isInSight(first));
  EXPECT_FALSE(isInSight(last));
}

TEST_F(ScrollingTest, TwoTooTallContentsShareTheWindow) {
  label->setText(lines(500));
  auto content = std::make_unique<Label>(lines(500));
  const ScrollView& other = stack->add<ScrollView>(std::move(content));
  show();
  EXPECT_LE(widgetOf(*window).frameGeometry().height(), room().height());
  EXPECT_GT(widgetOf(*scroll).height(), 100);
  EXPECT_GT(widgetOf(other).height(), 100);
}

}  // namespace
}  // namespace quillmar
