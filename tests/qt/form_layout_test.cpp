// Where forms put their labels and views.

#include <QApplication>
#include <QRect>
#include <QWidget>
#include <string>

#include <gtest/gtest.h>

#include "platform/widgets/checkbox.h"
#include "platform/widgets/grid_view.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "platform/widgets/text_view.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/pictures.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

class FormLayoutTest : public WidgetsFixture<QtUser> {
 protected:
  FormLayoutTest() : form(stack->add<GridView>()) {
    window->setContentSize({});
    form.setRowSpacing(10);
    form.setColumnSpacing(10);
    form.setFirstColumnWidth(90);
    form.setWidth(460);
  }

  static QRect frame(const View& view) {
    const QWidget& widget = widgetOf(view);
    return {widget.mapTo(widget.window(), QPoint(0, 0)), widget.size()};
  }
  const Label& label(std::size_t row) const { return *form.rows()[row].label; }
  /// The middle of the ink of the first line, in the coordinates of the window.
  static int middleOfText(const View& view) {
    return frame(view).top() + inkFrame(pictureOf(view)).center().y();
  }

  GridView& form;
};

TEST_F(FormLayoutTest, LabelsEndWhereTheSpaceBesideTheViewsBegins) {
  const TextField& name = form.addRow<TextField>("Name:");
  const TextField& icon = form.addRow<TextField>("Input label:");
  show();
  EXPECT_EQ(frame(label(0)).right(), 89);
  EXPECT_EQ(frame(label(1)).right(), 89);
  EXPECT_EQ(frame(name).left(), 100);
  EXPECT_EQ(frame(icon).left(), 100);
  EXPECT_EQ(frame(icon).top() - frame(name).bottom() - 1, 10);
}

TEST_F(FormLayoutTest, AViewWithoutALabelIsInTheSecondColumn) {
  const Checkbox& checkbox = form.addRow<Checkbox>("", "Show items directly in the menu");
  show();
  EXPECT_EQ(frame(checkbox).left(), 100);
}

TEST_F(FormLayoutTest, AHintIsCloseToTheFieldAboveItAndWraps) {
  const TextField& field = form.addRow<TextField>("Icon:");
  auto& hint = form.addRow<Label>("", std::string(100, 'x') + " " + std::string(100, 'x'));
  hint.setWraps(true);
  form.setTopPadding(-6, hint);
  show();
  EXPECT_EQ(frame(hint).top() - frame(field).bottom() - 1, 4);
  EXPECT_EQ(frame(hint).left(), 100);
  EXPECT_LE(frame(hint).right(), 460);
  EXPECT_GT(frame(hint).height(), 2 * widgetOf(hint).fontMetrics().height());
}

TEST_F(FormLayoutTest, ALabelIsOnOneLineWithTheTextBesideIt) {
  TextField& field = form.addRow<TextField>("xxx");
  field.setText("xxx");
  auto& row = form.addRow<StackView>("xxx", Orientation::horizontal);
  TextField& inRow = row.add<TextField>();
  inRow.setText("xxx");
  auto& column = form.addRow<StackView>("xxx", Orientation::vertical);
  column.add<Checkbox>("one");
  column.add<Checkbox>("two");
  auto& text = form.addRow<TextView>("xxx");
  text.setHeight(90);
  show();
  const auto middle = [](const View& view) { return frame(view).center().y(); };
  EXPECT_NEAR(middle(label(0)), middle(field), 1);
  EXPECT_NEAR(middle(label(1)), middle(inRow), 1);
  EXPECT_NEAR(middle(label(2)), middle(*column.subviews().front()), 1);
  EXPECT_NEAR(frame(label(3)).top(), frame(text).top(), 10);
  EXPECT_EQ(frame(text).height(), 90);
}

TEST_F(FormLayoutTest, ALongerLabelMakesItsColumnWider) {
  const TextField& field = form.addRow<TextField>("A label that is wider than its column:");
  show();
  const int whole = widgetOf(label(0)).sizeHint().width();
  EXPECT_EQ(frame(label(0)).width(), whole);
  EXPECT_EQ(frame(field).left(), whole + 10);
}

TEST_F(FormLayoutTest, AHiddenViewTakesItsLabelAndItsSpaceAlong) {
  TextField& first = form.addRow<TextField>("First:");
  const TextField& second = form.addRow<TextField>("Second:");
  first.setHidden(true);
  show();
  EXPECT_FALSE(harness.isShown(label(0)));
  EXPECT_EQ(frame(second).top(), 0);
  first.setHidden(false);
  harness.settle();
  EXPECT_TRUE(harness.isShown(label(0)));
}

TEST_F(FormLayoutTest, AFormFromTheRightIsMirrored) {
  QApplication::setLayoutDirection(Qt::RightToLeft);
  const TextField& name = form.addRow<TextField>("Name:");
  show();
  EXPECT_EQ(frame(label(0)).left(), 460 - 90);
  EXPECT_EQ(frame(name).right(), 460 - 100 - 1);
  QApplication::setLayoutDirection(Qt::LeftToRight);
}

}  // namespace
}  // namespace quillmar
