// Sizes, weights and kinds of the fonts that texts are shown in.

#include <QApplication>
#include <QFontMetrics>
#include <QWidget>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/widgets/button.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "platform/widgets/text_field.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/pictures.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

constexpr double sizeError = 0.01;

class FontsTest : public WidgetsFixture<QtUser> {
 protected:
  FontsTest() { QApplication::setFont(QFont(desktop_.family(), 10)); }
  ~FontsTest() override { QApplication::setFont(desktop_); }

  Label& addLabel(const Font& font, const std::string& text = "Hamburgefonts") {
    return stack->add<Label>(text, font);
  }
  static double points(const View& view) { return widgetOf(view).font().pointSizeF(); }
  static int width(const View& view) { return widgetOf(view).width(); }

 private:
  const QFont desktop_ = QApplication::font();
};

TEST_F(FontsTest, Size13IsTheDesktopsFontSizeAndOthersAreInProportion) {
  const Label& usual = addLabel(Font::system(13));
  const Label& large = addLabel(Font::system(26));
  const Label& small = addLabel(Font::system(11));
  show();
  EXPECT_NEAR(points(usual), 10, sizeError);
  EXPECT_NEAR(points(large), 20, sizeError);
  EXPECT_NEAR(points(small), 10.0 * 11 / 13, sizeError);
}

TEST_F(FontsTest, ButtonsLinksAndFieldsAreScaledLikeLabels) {
  Button& button = addButton("Button");
  Button& link = stack->add<Button>("Link", ButtonStyle::link);
  TextField& field = addField("Field");
  const TextField& usual = addField("Field");
  for (Button* const each : {&button, &link}) each->setFont(Font::system(26));
  field.setFont(Font::system(26));
  show();
  EXPECT_NEAR(points(button), 20, sizeError);
  EXPECT_NEAR(points(link), 20, sizeError);
  EXPECT_NEAR(points(field), 20, sizeError);
  EXPECT_NEAR(points(usual), 10, sizeError);
}

TEST_F(FontsTest, ATextOfThreeTimesTheSizeIsDrawnThreeTimesAsTall) {
  const Label& usual = addLabel(Font::system(13), "H");
  const Label& large = addLabel(Font::system(39), "H");
  show();
  const double ratio =
      1.0 * inkFrame(pictureOf(large)).height() / inkFrame(pictureOf(usual)).height();
  EXPECT_NEAR(ratio, 3, 0.4);
}

TEST_F(FontsTest, AFontThatIsMeasuredInPixelsIsScaledToo) {
  QFont pixels = QApplication::font();
  pixels.setPixelSize(12);
  QApplication::setFont(pixels);
  const Label& usual = addLabel(Font::system(13));
  const Label& large = addLabel(Font::system(26));
  show();
  EXPECT_EQ(widgetOf(usual).font().pixelSize(), 12);
  EXPECT_EQ(widgetOf(large).font().pixelSize(), 24);
}

TEST_F(FontsTest, WeightsAreThoseThatAreMeant) {
  Font semibold = Font::system(13);
  semibold.weight = FontWeight::semibold;
  EXPECT_EQ(semibold.weight, FontWeight::semibold);
  const Label& regular = addLabel(Font::system(13));
  const Label& half = addLabel(semibold);
  const Label& bold = addLabel(Font::boldSystem(13));
  show();
  EXPECT_EQ(widgetOf(regular).font().weight(), QFont::Normal);
  EXPECT_EQ(widgetOf(half).font().weight(), QFont::DemiBold);
  EXPECT_EQ(widgetOf(bold).font().weight(), QFont::Bold);
}

TEST_F(FontsTest, ABoldTextIsDrawnInThickerStrokes) {
  const Label& regular = addLabel(Font::system(39), "llll");
  const Label& bold = addLabel(Font::boldSystem(39), "llll");
  show();
  EXPECT_GT(inkShare(pictureOf(bold)), 1.2 * inkShare(pictureOf(regular)));
}

TEST_F(FontsTest, TheLettersOfAMonospacedTextHaveOneWidth) {
  Font monospaced = Font::system(13);
  const Label& slim = addLabel(monospaced, "iiiiiiii");
  const Label& broad = addLabel(monospaced, "MMMMMMMM");
  monospaced.monospaced = true;
  const Label& evenSlim = addLabel(monospaced, "iiiiiiii");
  const Label& evenBroad = addLabel(monospaced, "MMMMMMMM");
  show();
  EXPECT_LT(width(slim), width(broad));
  EXPECT_EQ(width(evenSlim), width(evenBroad));
}

TEST_F(FontsTest, AMonospacedTextIsScaledAndBoldLikeOthers) {
  Font monospaced = Font::system(13);
  monospaced.monospaced = true;
  const Label& usual = addLabel(monospaced);
  Font large = Font::boldSystem(26);
  large.monospaced = true;
  const Label& other = addLabel(large);
  show();
  EXPECT_NEAR(points(other), 2 * points(usual), sizeError);
  EXPECT_EQ(widgetOf(other).font().weight(), QFont::Bold);
}

TEST_F(FontsTest, AnImageWithoutAStatedSizeIsAsTallAsTheTextThatItGoesWith) {
  const Label& text = addLabel(Font::system(26));
  const ImageView& image = stack->add<ImageView>(
      Image{.name = "folder", .isTemplate = true, .pointSize = 26, .weight = {}});
  show();
  EXPECT_EQ(widgetOf(image).height(), QFontMetrics(widgetOf(text).font()).height());
  EXPECT_EQ(widgetOf(image).width(), widgetOf(image).height());
}

TEST_F(FontsTest, AFontThatTheProgramChangesIsShown) {
  Label& label = addLabel(Font::system(13));
  show();
  const int before = width(label);
  label.setFont(Font::boldSystem(26));
  harness.settle();
  EXPECT_NEAR(points(label), 20, sizeError);
  EXPECT_GT(width(label), 1.5 * before);
}

TEST_F(FontsTest, WhenTheDesktopsFontChangesOpenWindowsFollow) {
  const Label& label = addLabel(Font::system(13));
  const Label& large = addLabel(Font::boldSystem(26));
  const Button& button = addButton("Button");
  const TextField& field = addField("Field");
  show();
  const int before = width(large);
  QApplication::setFont(QFont(QApplication::font().family(), 15));
  harness.settle();
  EXPECT_NEAR(points(label), 15, sizeError);
  EXPECT_NEAR(points(large), 30, sizeError);
  EXPECT_EQ(widgetOf(large).font().weight(), QFont::Bold);
  EXPECT_NEAR(points(button), 15, sizeError);
  EXPECT_NEAR(points(field), 15, sizeError);
  EXPECT_GT(width(large), 1.3 * before);
}

}  // namespace
}  // namespace quillmar
