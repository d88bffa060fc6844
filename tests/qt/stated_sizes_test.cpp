// How large views and windows are: what is stated, and what their texts need besides.

#include <QApplication>
#include <QFontMetrics>
#include <QScreen>
#include <QStyle>
#include <QWidget>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/qt/widgets/text_widget.h"
#include "platform/widgets/button.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "platform/widgets/stack_view.h"
#include "platform/widgets/text_field.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

const std::string sentence =
    "The quick brown fox jumps over the lazy dog, and the dog does not mind at all.";

class StatedSizesTest : public WidgetsFixture<QtUser> {
 protected:
  StatedSizesTest() { window->setContentSize({}); }

  Label& addLabel(const std::string& text) { return stack->add<Label>(text); }
  static QSize size(const View& view) { return widgetOf(view).size(); }
  static int neededWidth(const View& view) {
    return QFontMetrics(widgetOf(view).font())
        .horizontalAdvance(static_cast<const TextWidget&>(widgetOf(view)).text());
  }
  static int lineHeight(const View& view) { return widgetOf(view).fontMetrics().height(); }
};

TEST_F(StatedSizesTest, AViewHasItsStatedSizeWhereItsTextNeedsLess) {
  Label& label = addLabel("Text");
  label.setWidth(200);
  label.setHeight(90);
  Button& button = addButton("Text");
  button.setWidth(210);
  TextField& field = addField("Text");
  field.setWidth(220);
  show();
  EXPECT_EQ(size(label), QSize(200, 90));
  EXPECT_EQ(size(button).width(), 210);
  EXPECT_EQ(size(field).width(), 220);
}

TEST_F(StatedSizesTest, AStatedWidthIsAMinimumForATextThatNeedsMore) {
  Label& label = addLabel(sentence);
  label.setWidth(40);
  Button& button = addButton(sentence);
  button.setWidth(40);
  show();
  EXPECT_GE(size(label).width(), neededWidth(label));
  EXPECT_GE(size(button).width(),
            widgetOf(button).fontMetrics().horizontalAdvance(QString::fromStdString(sentence)));
  EXPECT_GE(widgetOf(*window).width(), size(label).width());
}

TEST_F(StatedSizesTest, AStatedHeightIsAMinimumForATextThatNeedsMore) {
  Label& label = addLabel("one\ntwo\nthree");
  label.setHeight(10);
  TextField& field = addField("Text");
  field.setHeight(2);
  show();
  EXPECT_GE(size(label).height(), 3 * lineHeight(label));
  EXPECT_GE(size(field).height(), lineHeight(field));
}

TEST_F(StatedSizesTest, ATextThatWrapsKeepsItsStatedWidthAndGrowsDownwards) {
  Label& label = addLabel(sentence);
  label.setWraps(true);
  label.setWidth(150);
  show();
  EXPECT_EQ(size(label).width(), 150);
  const int lines = neededWidth(label) / 150 + 1;
  EXPECT_GE(size(label).height(), lines * lineHeight(label));
  EXPECT_LE(size(label).height(), (lines + 3) * lineHeight(label));
  EXPECT_EQ(widgetOf(*window).height(), size(label).height());
}

TEST_F(StatedSizesTest, ATextThatWrapsTakesTheWidthOfItsWindow) {
  window->setContentSize({.width = 250, .height = 0});
  Label& label = addLabel(sentence);
  label.setWraps(true);
  show();
  EXPECT_EQ(size(label).width(), 250);
  EXPECT_EQ(widgetOf(*window).width(), 250);
  EXPECT_GT(size(label).height(), lineHeight(label));
}

TEST_F(StatedSizesTest, AWordThatIsLongerThanItsLineIsBroken) {
  Label& label = addLabel(std::string(100, 'x'));
  label.setWraps(true);
  label.setWidth(120);
  show();
  EXPECT_EQ(size(label).width(), 120);
  EXPECT_GE(size(label).height(), neededWidth(label) / 120 * lineHeight(label));
}

TEST_F(StatedSizesTest, ALongTextWithoutAnyStatedWidthIsWrappedIntoReadableLines) {
  Label& label = addLabel(sentence + " " + sentence + " " + sentence);
  label.setWraps(true);
  show();
  EXPECT_LT(size(label).width(), neededWidth(label) / 2);
  EXPECT_GT(size(label).width(), neededWidth(label) / 10);
}

TEST_F(StatedSizesTest, AnEmptyTextIsOneLineTall) {
  const Label& label = addLabel("");
  const Label& other = addLabel("Text");
  show();
  EXPECT_EQ(size(label).height(), size(other).height());
}

TEST_F(StatedSizesTest, AnImageHasItsStatedSize) {
  ImageView& image = stack->add<ImageView>(
      Image{.name = "folder", .isTemplate = false, .pointSize = {}, .weight = {}});
  image.setWidth(64);
  image.setHeight(48);
  const ImageView& none = stack->add<ImageView>(std::nullopt);
  show();
  EXPECT_EQ(size(image), QSize(64, 48));
  EXPECT_TRUE(size(none).isEmpty());
}

TEST_F(StatedSizesTest, AStackWithAStatedWidthStillFillsItsParent) {
  window->setContentSize({.width = 300, .height = 0});
  StackView& row = stack->add<StackView>(Orientation::horizontal);
  row.setWidth(100);
  row.add<FlexibleSpace>();
  StackView& full = stack->add<StackView>(Orientation::horizontal);
  full.setWidth(350);
  full.add<Label>("Text");
  show();
  EXPECT_EQ(size(full).width(), 350);
  EXPECT_EQ(size(row).width(), 350);
}

TEST_F(StatedSizesTest, AStatedSizeThatChangesIsShown) {
  Label& label = addLabel("Text");
  label.setWidth(200);
  show();
  label.setWidth(240);
  harness.settle();
  EXPECT_EQ(size(label).width(), 240);
  EXPECT_EQ(widgetOf(*window).width(), 240);
  label.setWidth(std::nullopt);
  harness.settle();
  EXPECT_LT(size(label).width(), 100);
}

TEST_F(StatedSizesTest, AWindowHasItsStatedSizeAndMoreForContentThatNeedsIt) {
  window->setContentSize({.width = 300, .height = 200});
  Label& label = addLabel("Text");
  show();
  EXPECT_EQ(widgetOf(*window).size(), QSize(300, 200));
  label.setHeight(260);
  label.setText(sentence);
  harness.settle();
  EXPECT_GE(widgetOf(*window).width(), neededWidth(label));
  EXPECT_EQ(widgetOf(*window).height(), 260);
  label.setHeight(std::nullopt);
  label.setText("Text");
  harness.settle();
  EXPECT_EQ(widgetOf(*window).size(), QSize(300, 200));
}

TEST_F(StatedSizesTest, AViewIsNeverLargerThanItsMaximumSize) {
  window->setContentSize({.width = 300, .height = 300});
  Label& label = addLabel(sentence);
  label.setMaximumWidth(80);
  Label& tall = addLabel("one\ntwo\nthree");
  tall.setMaximumHeight(20);
  TextField& field = addField("Text");
  field.setMaximumWidth(120);
  Button& button = addButton("Text");
  button.setWidth(200);
  button.setMaximumWidth(150);
  show();
  EXPECT_EQ(size(label).width(), 80);
  EXPECT_EQ(size(tall).height(), 20);
  EXPECT_EQ(size(field).width(), 120);
  EXPECT_EQ(size(button).width(), 150);
  EXPECT_EQ(widgetOf(*window).width(), 300);
  label.setMaximumWidth(std::nullopt);
  harness.settle();
  EXPECT_GE(size(label).width(), neededWidth(label));
}

TEST_F(StatedSizesTest, AWindowCannotBeResizedByItsBorder) {
  addLabel("Text");
  show();
  EXPECT_EQ(widgetOf(*window).minimumSize(), widgetOf(*window).maximumSize());
}

TEST_F(StatedSizesTest, AResizableWindowIsAsLargeAsStatedAndThenAsTheUserWants) {
  window->setResizable(true);
  window->setContentSize({.width = 400, .height = 300});
  window->setMinimumContentSize({.width = 250, .height = 150});
  stack->setAlignment(StackAlignment::fill);
  const Button& button = addButton("Button");
  Label& label = addLabel("Text");
  show();
  EXPECT_EQ(widgetOf(*window).size(), QSize(400, 300));
  widgetOf(*window).resize(500, 200);
  harness.settle();
  EXPECT_EQ(size(button).width(), 500);
  label.setText("Other");
  harness.settle();
  EXPECT_EQ(widgetOf(*window).size(), QSize(500, 200));
  widgetOf(*window).resize(10, 10);
  harness.settle();
  EXPECT_EQ(widgetOf(*window).size(), QSize(250, 150));
  window->close();
  show();
  EXPECT_EQ(widgetOf(*window).size(), QSize(250, 150));
}

TEST_F(StatedSizesTest, AResizableWindowIsNeverTooSmallForItsContent) {
  window->setResizable(true);
  window->setContentSize({.width = 300, .height = 200});
  Label& label = addLabel("Text");
  show();
  label.setText(sentence);
  label.setHeight(260);
  harness.settle();
  EXPECT_GE(widgetOf(*window).width(), neededWidth(label));
  EXPECT_EQ(widgetOf(*window).height(), 260);
}

TEST_F(StatedSizesTest, AWindowIsNeverLargerThanTheScreen) {
  window->setContentSize({.width = 5000, .height = 5000});
  addLabel(std::string(3000, 'x'));
  show();
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  EXPECT_LE(widgetOf(*window).frameGeometry().width(), screen.width());
  EXPECT_LE(widgetOf(*window).frameGeometry().height(), screen.height());
}

TEST_F(StatedSizesTest, AWindowThatIsCutToTheScreenHasRoomForTheLinesThatThisTakes) {
  window->setContentSize({.width = 5000, .height = 0});
  std::string text;
  for (int i = 0; i < 10; ++i) text += sentence + " ";
  Label& label = addLabel(text);
  label.setWraps(true);
  show();
  EXPECT_LT(size(label).width(), 5000);
  EXPECT_EQ(size(label).height(), widgetOf(label).heightForWidth(size(label).width()));
}

TEST_F(StatedSizesTest, AWindowThatGrowsPastTheEdgeOfTheScreenComesBack) {
  window->setContentSize({.width = 100, .height = 100});
  Label& label = addLabel("Text");
  show();
  const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
  widgetOf(*window).move(screen.bottomRight() - QPoint(110, 110));
  harness.settle();
  label.setWidth(300);
  label.setHeight(300);
  harness.settle();
  EXPECT_EQ(widgetOf(*window).size(), QSize(300, 300));
  EXPECT_TRUE(screen.contains(widgetOf(*window).geometry()));
}

TEST_F(StatedSizesTest, ACenteredWindowStandsInTheMiddleOfTheScreen) {
  window->setContentSize({.width = 300, .height = 200});
  window->center();
  show();
  const QPoint off = widgetOf(*window).geometry().center() -
                     QGuiApplication::primaryScreen()->availableGeometry().center();
  // The title bar counts.
  EXPECT_LE(std::abs(off.x()), 20);
  EXPECT_LE(std::abs(off.y()), 20);
}

TEST_F(StatedSizesTest, WindowsInTheMiddleDoNotCoverTheTitleBarsOfOthers) {
  std::vector<std::unique_ptr<Window>> windows;
  for (const Size& stated : {Size{300, 100}, Size{300, 100}, Size{500, 300}}) {
    auto& added = windows.emplace_back(std::make_unique<Window>(harness.windows()));
    added->setContentSize(stated);
    added->center();
    show(*added);
    for (const auto& other : windows) {
      if (other == added) continue;
      QRect titleBar = widgetOf(*other).frameGeometry();
      titleBar.setHeight(20);
      EXPECT_FALSE(widgetOf(*added).frameGeometry().contains(titleBar)) << windows.size();
    }
  }
  windows[0]->close();
  windows[1]->close();
  windows[2]->close();
  windows[0]->center();
  show(*windows[0]);
  const QPoint off = widgetOf(*windows[0]).geometry().center() -
                     QGuiApplication::primaryScreen()->availableGeometry().center();
  EXPECT_LE(std::abs(off.y()), 20);
}

}  // namespace
}  // namespace quillmar
