// Where stacks put their views.

#include <QApplication>
#include <QRect>
#include <QWidget>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

class StackLayoutTest : public WidgetsFixture<QtUser> {
 protected:
  /// A window as large as its content.
  StackLayoutTest() { window->setContentSize({}); }
  ~StackLayoutTest() override { QApplication::setLayoutDirection(Qt::LeftToRight); }

  static Label& addLabel(StackView& to, const std::string& text, double size = 13) {
    return to.add<Label>(text, Font::system(size));
  }
  StackView& addRow() { return stack->add<StackView>(Orientation::horizontal); }
  /// In the window's coordinates.
  static QRect frame(const View& view) {
    const QWidget& widget = widgetOf(view);
    return {widget.mapTo(widget.window(), QPoint(0, 0)), widget.size()};
  }
  static int gapBelow(const View& upper, const View& lower) {
    return frame(lower).top() - frame(upper).bottom() - 1;
  }
  static int gapBeside(const View& left, const View& right) {
    return frame(right).left() - frame(left).right() - 1;
  }
  /// Of the two sides around it, how much one has more than the other.
  static int offCenter(const QRect& inner, const QRect& outer) {
    return (inner.left() - outer.left()) - (outer.right() - inner.right());
  }
};

TEST_F(StackLayoutTest, AColumnHasItsSpacingBetweenNeighbours) {
  stack->setSpacing(7);
  const Label& first = addLabel(*stack, "First");
  const Label& second = addLabel(*stack, "Second");
  const Label& third = addLabel(*stack, "Third");
  show();
  EXPECT_EQ(gapBelow(first, second), 7);
  EXPECT_EQ(gapBelow(second, third), 7);
  EXPECT_EQ(frame(first).top(), 0);
  EXPECT_EQ(widgetOf(*window).height(), frame(third).bottom() + 1);
}

TEST_F(StackLayoutTest, ARowHasItsSpacingBetweenNeighbours) {
  StackView& row = addRow();
  row.setSpacing(9);
  const Label& first = addLabel(row, "First");
  const Label& second = addLabel(row, "Second");
  const Label& third = addLabel(row, "Third");
  show();
  EXPECT_EQ(gapBeside(first, second), 9);
  EXPECT_EQ(gapBeside(second, third), 9);
  EXPECT_EQ(widgetOf(*window).width(), frame(third).right() + 1);
}

TEST_F(StackLayoutTest, CustomSpacingTakesThePlaceOfTheSpacingAfterOneView) {
  stack->setSpacing(7);
  StackView& row = addRow();
  row.setSpacing(9);
  const Label& left = addLabel(row, "Left");
  const Label& middle = addLabel(row, "Middle");
  const Label& right = addLabel(row, "Right");
  row.setCustomSpacing(21, left);
  const Label& lower = addLabel(*stack, "Lower");
  const Label& lowest = addLabel(*stack, "Lowest");
  stack->setCustomSpacing(30, row);
  show();
  EXPECT_EQ(gapBeside(left, middle), 21);
  EXPECT_EQ(gapBeside(middle, right), 9);
  EXPECT_EQ(gapBelow(row, lower), 30);
  EXPECT_EQ(gapBelow(lower, lowest), 7);
  EXPECT_EQ(frame(row).right(), frame(right).right());
  EXPECT_EQ(widgetOf(*window).height(), frame(lowest).bottom() + 1);
  // And again, while the window is open.
  stack->setCustomSpacing(2, row);
  harness.settle();
  EXPECT_EQ(gapBelow(row, lower), 2);
}

TEST_F(StackLayoutTest, EdgeInsetsStandAroundTheContent) {
  stack->setEdgeInsets({.top = 11, .left = 12, .bottom = 13, .right = 14});
  StackView& row = addRow();
  row.setEdgeInsets({.top = 1, .left = 2, .bottom = 3, .right = 4});
  const Label& label = addLabel(row, "Text");
  show();
  EXPECT_EQ(frame(label).topLeft(), QPoint(14, 12));
  EXPECT_EQ(widgetOf(*window).width(), frame(label).width() + 12 + 14 + 2 + 4);
  EXPECT_EQ(widgetOf(*window).height(), frame(label).height() + 11 + 13 + 1 + 3);
}

TEST_F(StackLayoutTest, FractionsAreRoundedUp) {
  stack->setSpacing(6.2);
  stack->setEdgeInsets({.top = 0, .left = 2.5, .bottom = 0, .right = 0});
  const Label& first = addLabel(*stack, "First");
  const Label& second = addLabel(*stack, "Second");
  show();
  EXPECT_EQ(gapBelow(first, second), 7);
  EXPECT_EQ(frame(first).left(), 3);
}

TEST_F(StackLayoutTest, AColumnAlignsItsViewsAtTheLeadingSide) {
  const Label& narrow = addLabel(*stack, "i");
  const Label& wide = addLabel(*stack, "A much wider text");
  show();
  EXPECT_EQ(frame(narrow).left(), 0);
  EXPECT_EQ(frame(wide).left(), 0);
}

TEST_F(StackLayoutTest, AColumnAlignsItsViewsInTheMiddle) {
  stack->setAlignment(StackAlignment::center);
  const Label& narrow = addLabel(*stack, "i");
  const Label& wide = addLabel(*stack, "A much wider text");
  show();
  EXPECT_GT(frame(narrow).left(), 20);
  EXPECT_LE(std::abs(offCenter(frame(narrow), frame(wide))), 1);
}

TEST_F(StackLayoutTest, ARowAlignsItsViewsAtTheTop) {
  StackView& row = addRow();
  row.setAlignment(StackAlignment::leading);
  const Label& small = addLabel(row, "small");
  const Label& large = addLabel(row, "large", 52);
  show();
  EXPECT_LT(frame(small).height(), frame(large).height());
  EXPECT_EQ(frame(small).top(), 0);
  EXPECT_EQ(frame(large).top(), 0);
}

TEST_F(StackLayoutTest, ARowAlignsItsViewsInTheMiddle) {
  StackView& row = addRow();
  const Label& small = addLabel(row, "small");
  const Label& large = addLabel(row, "large", 52);
  show();
  EXPECT_GT(frame(small).top(), 5);
  EXPECT_LE(std::abs(frame(small).center().y() - frame(large).center().y()), 1);
}

TEST_F(StackLayoutTest, AColumnAlignsItsViewsAtTheTrailingSide) {
  window->setContentSize({.width = 300, .height = 0});
  stack->setAlignment(StackAlignment::trailing);
  const Label& label = addLabel(*stack, "Text");
  show();
  EXPECT_EQ(frame(label).right(), 299);
  EXPECT_LT(frame(label).width(), 100);
}

TEST_F(StackLayoutTest, ARowAlignsItsViewsAtTheBottom) {
  StackView& row = addRow();
  row.setAlignment(StackAlignment::trailing);
  const Label& small = addLabel(row, "Text", 8);
  const Label& large = addLabel(row, "Text", 30);
  show();
  EXPECT_EQ(frame(small).bottom(), frame(large).bottom());
  EXPECT_GT(frame(small).top(), frame(large).top());
}

TEST_F(StackLayoutTest, AFilledColumnMakesItsViewsAsWideAsItself) {
  window->setContentSize({.width = 300, .height = 0});
  stack->setAlignment(StackAlignment::fill);
  const Button& button = addButton("Text");
  Button& limited = addButton("Text");
  limited.setMaximumWidth(120);
  show();
  EXPECT_EQ(frame(button).width(), 300);
  EXPECT_EQ(frame(limited).left(), 0);
  EXPECT_EQ(frame(limited).width(), 120);
}

TEST_F(StackLayoutTest, AFilledRowMakesItsViewsAsHighAsItself) {
  StackView& row = addRow();
  row.setAlignment(StackAlignment::fill);
  const Label& small = addLabel(row, "Text", 8);
  const Label& large = addLabel(row, "Text", 30);
  show();
  EXPECT_EQ(frame(small).height(), frame(large).height());
}

TEST_F(StackLayoutTest, WhereLinesBeginOnTheRightSoDoRowsAndColumns) {
  QApplication::setLayoutDirection(Qt::RightToLeft);
  window->setContentSize({.width = 300, .height = 100});
  StackView& row = addRow();
  row.setSpacing(9);
  const Label& first = addLabel(row, "First");
  const Label& second = addLabel(row, "Second");
  const Label& below = addLabel(*stack, "Below");
  show();
  EXPECT_EQ(frame(first).right(), 299);
  EXPECT_EQ(gapBeside(second, first), 9);
  EXPECT_EQ(frame(below).right(), 299);
}

TEST_F(StackLayoutTest, AFlexibleSpacePushesTheViewsOfARowApart) {
  window->setContentSize({.width = 300, .height = 0});
  StackView& row = addRow();
  const Label& left = addLabel(row, "Left");
  row.add<FlexibleSpace>();
  const Label& right = addLabel(row, "Right");
  show();
  EXPECT_EQ(frame(left).left(), 0);
  EXPECT_EQ(frame(right).right(), 299);
}

TEST_F(StackLayoutTest, TwoFlexibleSpacesShareWhatIsSpare) {
  window->setContentSize({.width = 300, .height = 0});
  StackView& row = addRow();
  row.add<FlexibleSpace>();
  const Label& middle = addLabel(row, "Middle");
  row.add<FlexibleSpace>();
  show();
  EXPECT_LE(std::abs(offCenter(frame(middle), QRect(0, 0, 300, 1))), 1);
}

TEST_F(StackLayoutTest, AFlexibleSpacePushesTheViewsOfAColumnApart) {
  window->setContentSize({.width = 0, .height = 240});
  const Label& top = addLabel(*stack, "Top");
  stack->add<FlexibleSpace>();
  const Label& bottom = addLabel(*stack, "Bottom");
  show();
  EXPECT_EQ(frame(top).top(), 0);
  EXPECT_EQ(frame(bottom).bottom(), 239);
}

TEST_F(StackLayoutTest, AFlexibleSpaceIsNothingWhereThereIsNoRoomToSpare) {
  StackView& row = addRow();
  const Label& left = addLabel(row, "Left");
  row.add<FlexibleSpace>();
  const Label& right = addLabel(row, "Right");
  show();
  EXPECT_EQ(gapBeside(left, right), 0);
  EXPECT_EQ(widgetOf(*window).width(), frame(right).right() + 1);
}

TEST_F(StackLayoutTest, AFieldTakesTheRestOfItsRow) {
  window->setContentSize({.width = 300, .height = 0});
  StackView& row = addRow();
  row.setSpacing(8);
  const Label& label = addLabel(row, "Name:");
  const TextField& field = row.add<TextField>();
  show();
  EXPECT_EQ(gapBeside(label, field), 8);
  EXPECT_EQ(frame(field).right(), 299);
}

TEST_F(StackLayoutTest, AHiddenViewTakesNoRoomAndNoSpacing) {
  stack->setSpacing(7);
  const Label& first = addLabel(*stack, "First");
  Label& second = addLabel(*stack, "Second");
  const Label& third = addLabel(*stack, "Third");
  second.setHidden(true);
  show();
  EXPECT_EQ(gapBelow(first, third), 7);
  const int before = widgetOf(*window).height();
  second.setHidden(false);
  harness.settle();
  EXPECT_EQ(gapBelow(first, second), 7);
  EXPECT_EQ(gapBelow(second, third), 7);
  EXPECT_EQ(widgetOf(*window).height(), before + frame(second).height() + 7);
}

}  // namespace
}  // namespace quillmar
