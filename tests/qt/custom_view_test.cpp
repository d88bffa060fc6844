// How custom views look on the screen.

#include "platform/widgets/custom_view.h"

#include <QApplication>
#include <QPalette>
#include <array>

#include <gtest/gtest.h>

#include "platform/qt/widgets/qt_canvas.h"
#include "platform/widgets/label.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/pictures.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

QColor paletteColor(CanvasColor color) {
  return canvasColor(color, QApplication::palette());
}

/// Draws what a test wants.
class DrawnView final : public CustomView {
 public:
  explicit DrawnView(std::function<void(Canvas& canvas)> draw) : draw_(std::move(draw)) {}
  Size naturalSize() const override { return {.width = 60, .height = 24}; }
  void draw(Canvas& canvas) const override { draw_(canvas); }

 private:
  std::function<void(Canvas& canvas)> draw_;
};

class CustomViewTest : public WidgetsFixture<QtUser> {
 protected:
  QImage picture(std::function<void(Canvas& canvas)> draw) {
    const auto& view = stack->add<DrawnView>(std::move(draw));
    show();
    return pictureOf(view);
  }
};

constexpr RoundedRect outline{
    .rect = {.origin = {.x = 0.5, .y = 0.5}, .size = {.width = 59, .height = 23}}, .radius = 5};

TEST_F(CustomViewTest, AFillHasItsColourAndItsCornersAreRound) {
  const QImage shown = picture(
      [](Canvas& canvas) { canvas.fill(outline, {.color = CanvasColor::controlBackground}); });
  EXPECT_EQ(shown.pixelColor(30, 12), paletteColor(CanvasColor::controlBackground));
  EXPECT_EQ(shown.pixelColor(0, 0), QApplication::palette().color(QPalette::Window));
}

TEST_F(CustomViewTest, ALineOfOnePixelIsSharp) {
  const QImage shown =
      picture([](Canvas& canvas) { canvas.stroke(outline, {.color = CanvasColor::accent}, 1); });
  const QColor backdrop = QApplication::palette().color(QPalette::Window);
  for (const QPoint& edge : {QPoint(30, 0), QPoint(30, 23), QPoint(0, 12), QPoint(59, 12)}) {
    EXPECT_EQ(shown.pixelColor(edge), paletteColor(CanvasColor::accent));
  }
  for (const QPoint& inside : {QPoint(30, 1), QPoint(30, 22), QPoint(1, 12), QPoint(58, 12)}) {
    EXPECT_EQ(shown.pixelColor(inside), backdrop);
  }
}

TEST_F(CustomViewTest, ATranslucentFillIsMixedWithWhatIsBehindIt) {
  const QImage shown = picture([](Canvas& canvas) {
    canvas.fill(outline, {.color = CanvasColor::selectedControl, .alpha = 0.25});
  });
  const QColor backdrop = QApplication::palette().color(QPalette::Window);
  const QColor selected = paletteColor(CanvasColor::selectedControl);
  EXPECT_NEAR(shown.pixelColor(30, 12).red(), (3 * backdrop.red() + selected.red()) / 4, 1);
  EXPECT_NEAR(shown.pixelColor(30, 12).blue(), (3 * backdrop.blue() + selected.blue()) / 4, 1);
}

TEST_F(CustomViewTest, ATextIsDrawnWhereItsMeasureSays) {
  const QImage shown = picture([](Canvas& canvas) {
    const std::string text = "HHH";
    const Size size = canvas.textSize(text, Font::system(12));
    canvas.drawText(text, {.x = (60 - size.width) / 2, .y = (24 - size.height) / 2},
                    Font::system(12), {.color = CanvasColor::label});
  });
  const QRect ink = inkFrame(shown);
  EXPECT_NEAR(ink.center().x(), 30, 1);
  // Capital letters stand on the line and leave room above and below.
  EXPECT_NEAR(ink.center().y(), 12, 2);
  EXPECT_LT(ink.height(), 14);
}

TEST_F(CustomViewTest, AViewGrowsWithTheTextThatItDraws) {
  const auto& view = stack->add<DrawnView>(
      [](Canvas& canvas) { canvas.drawText("A text that is longer", {}, Font::system(40), {}); });
  show();
  EXPECT_GT(widgetOf(view).width(), 200);
  EXPECT_GT(widgetOf(view).height(), 30);
}

TEST_F(CustomViewTest, TheFocusIsARing) {
  auto& view = stack->add<DrawnView>(
      [](Canvas& canvas) { canvas.fill(outline, {.color = CanvasColor::controlBackground}); });
  show();
  EXPECT_NE(pictureOf(view).pixelColor(30, 1), paletteColor(CanvasColor::accent));
  window->makeFirstResponder(&view);
  harness.settle();
  EXPECT_EQ(pictureOf(view).pixelColor(30, 1), paletteColor(CanvasColor::accent));
}

/// The desktop's light and dark colours, and others that are less common.
std::array<QPalette, 3> palettes() {
  QPalette dark(QColor(45, 45, 45));
  dark.setColor(QPalette::Base, QColor(30, 30, 30));
  dark.setColor(QPalette::Text, Qt::white);
  dark.setColor(QPalette::Highlight, QColor(21, 83, 158));
  QPalette strong = QApplication::palette();
  strong.setColor(QPalette::Highlight, QColor(240, 119, 70));
  return {QApplication::palette(), dark, strong};
}

TEST(CanvasColorTest, LabelsCanBeReadAndGrowPaler) {
  for (const QPalette& palette : palettes()) {
    const QColor background = canvasColor(CanvasColor::controlBackground, palette);
    const auto contrastOf = [&](CanvasColor color) {
      return contrast(canvasColor(color, palette), background);
    };
    EXPECT_GT(contrastOf(CanvasColor::label), contrastOf(CanvasColor::secondaryLabel));
    EXPECT_GT(contrastOf(CanvasColor::secondaryLabel), contrastOf(CanvasColor::tertiaryLabel));
    EXPECT_GE(contrastOf(CanvasColor::tertiaryLabel), 4.5);
    EXPECT_GT(contrastOf(CanvasColor::separator), 1.2);
  }
}

TEST(CanvasColorTest, SecondaryLabelsCanBeReadOnATintedControl) {
  for (const QPalette& palette : palettes()) {
    const QColor window = palette.color(QPalette::Window);
    const QColor selected = canvasColor(CanvasColor::selectedControl, palette);
    const auto quarter = [](int one, int other) { return (3 * one + other) / 4; };
    const QColor tinted(quarter(window.red(), selected.red()),
                        quarter(window.green(), selected.green()),
                        quarter(window.blue(), selected.blue()));
    EXPECT_GE(contrast(canvasColor(CanvasColor::secondaryLabel, palette), tinted), 4.4);
  }
}

}  // namespace
}  // namespace quillmar
