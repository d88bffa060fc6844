// Colours of texts and icons, by the desktop's palette.

#include <QApplication>
#include <QPalette>
#include <QWidget>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "platform/qt/menus/scrolling_menu.h"
#include "platform/qt/module/default_palettes.h"
#include "platform/widgets/button.h"
#include "platform/widgets/image_view.h"
#include "platform/widgets/label.h"
#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/icon_theme.h"
#include "tests/qt/pictures.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

/// What guidelines ask of texts that everybody can read.
constexpr double readable = 4.5;

class ColorsTest : public WidgetsFixture<QtUser> {
 protected:
  ~ColorsTest() override { QApplication::setPalette(QPalette()); }

  /// Large enough for pixels that nothing but the text's colour is in.
  Label& addLabel(const std::string& text) { return stack->add<Label>(text, Font::system(52)); }
  Button& addLink(const std::string& title) {
    Button& link = stack->add<Button>(title, ButtonStyle::link);
    link.setFont(Font::system(52));
    return link;
  }
  ImageView& addSquare(bool isTemplate) {
    ImageView& view = stack->add<ImageView>(
        Image{.name = "square", .isTemplate = isTemplate, .pointSize = {}, .weight = {}});
    view.setWidth(16);
    view.setHeight(16);
    return view;
  }

  static QColor ink(const View& view) { return inkColor(pictureOf(view)); }
  /// Of a view that is one colour all over.
  static QColor middle(const View& view) {
    const QImage picture = pictureOf(view);
    return picture.pixelColor(picture.width() / 2, picture.height() / 2);
  }
  /// Of the window, where nothing lies on it.
  QColor paper() {
    const QImage picture = widgetOf(*window).grab().toImage();
    return picture.pixelColor(picture.width() - 1, picture.height() - 1);
  }
  static QColor wanted(QPalette::ColorRole role, QPalette::ColorGroup group = QPalette::Active) {
    return QApplication::palette().color(group, role);
  }
};

TEST_F(ColorsTest, TextsHaveThePalettesColour) {
  const Label& label = addLabel("HHH");
  show();
  EXPECT_EQ(ink(label), wanted(QPalette::WindowText));
  EXPECT_GT(contrast(ink(label), paper()), readable);
}

TEST_F(ColorsTest, ASecondaryTextIsPalerAndStillReadable) {
  Label& secondary = addLabel("HHH");
  secondary.setColor(TextColor::secondaryLabel);
  const Label& label = addLabel("HHH");
  show();
  EXPECT_LT(contrast(ink(secondary), paper()), contrast(ink(label), paper()) - 1);
  EXPECT_GT(contrast(ink(secondary), paper()), readable);
  secondary.setColor(TextColor::label);
  harness.settle();
  EXPECT_EQ(ink(secondary), ink(label));
}

TEST_F(ColorsTest, ALinkHasTheColourOfLinks) {
  const Button& link = addLink("HHH");
  show();
  ASSERT_NE(wanted(QPalette::Link), wanted(QPalette::WindowText));
  EXPECT_EQ(ink(link), wanted(QPalette::Link));
}

TEST_F(ColorsTest, ALinkTooDarkForItsWindowIsMadeReadable) {
  QPalette palette = darkPalette();
  palette.setColor(QPalette::Link, QColor(0, 0, 255));
  QApplication::setPalette(palette);
  const Button& link = addLink("Link");
  show();
  EXPECT_GE(contrast(ink(link), paper()), readable);
}

TEST_F(ColorsTest, WhatIsDisabledHasThePalettesColourForThat) {
  Label& label = addLabel("HHH");
  Button& link = addLink("HHH");
  label.setEnabled(false);
  link.setEnabled(false);
  show();
  const QColor disabled = wanted(QPalette::WindowText, QPalette::Disabled);
  ASSERT_NE(disabled, wanted(QPalette::WindowText));
  EXPECT_EQ(ink(label), disabled);
  EXPECT_EQ(ink(link), disabled);
}

TEST_F(ColorsTest, WhenThePaletteChangesOpenWindowsFollow) {
  const Label& label = addLabel("HHH");
  Label& secondary = addLabel("HHH");
  secondary.setColor(TextColor::secondaryLabel);
  const Button& link = addLink("HHH");
  show();
  QApplication::setPalette(darkPalette());
  harness.settle();
  EXPECT_EQ(paper(), darkPalette().color(QPalette::Window));
  EXPECT_EQ(ink(label), darkPalette().color(QPalette::WindowText));
  EXPECT_EQ(ink(link), darkPalette().color(QPalette::Link));
  EXPECT_GT(contrast(ink(secondary), paper()), readable);
  EXPECT_LT(contrast(ink(secondary), paper()), contrast(ink(label), paper()) - 1);
}

TEST_F(ColorsTest, ATemplateImageHasTheColourOfTexts) {
  IconTheme theme;
  theme.add("square", 16, 1, plainPicture(16, Qt::red));
  const ImageView& image = addSquare(true);
  show();
  EXPECT_EQ(middle(image), wanted(QPalette::WindowText));
  QApplication::setPalette(darkPalette());
  harness.settle();
  EXPECT_EQ(middle(image), darkPalette().color(QPalette::WindowText));
}

TEST_F(ColorsTest, ADisabledTemplateImageHasTheColourOfDisabledTexts) {
  IconTheme theme;
  theme.add("square", 16, 1, plainPicture(16, Qt::red));
  ImageView& image = addSquare(true);
  image.setEnabled(false);
  show();
  EXPECT_EQ(middle(image), wanted(QPalette::WindowText, QPalette::Disabled));
}

TEST_F(ColorsTest, AnotherImageKeepsItsColours) {
  IconTheme theme;
  theme.add("square", 16, 1, plainPicture(16, Qt::red));
  const ImageView& image = addSquare(false);
  show();
  EXPECT_EQ(middle(image), QColor(Qt::red));
}

TEST_F(ColorsTest, SeparatorsOfMenusAreSeenAndFainterThanTexts) {
  for (const QPalette& palette : {QApplication::palette(), darkPalette()}) {
    QApplication::setPalette(palette);
    ScrollingMenu menu;
    menu.addAction("HHH");
    const QAction* const separator = menu.addSeparator();
    menu.addAction("HHH");
    const QImage picture = menu.grab().toImage();
    const QRect row = menu.actionGeometry(const_cast<QAction*>(separator));
    const QImage drawn = picture.copy(row.adjusted(1, 0, -1, 0));
    const double seen = contrast(inkColor(drawn), drawn.pixelColor(0, 0));
    EXPECT_GT(seen, 1.8);
    EXPECT_LT(seen, readable);
  }
}

TEST_F(ColorsTest, AnImageThatIsNotThereIsAnEmptyPlace) {
  IconTheme theme;
  theme.add("square", 16, 1, plainPicture(16, Qt::red));
  ImageView& image = addSquare(true);
  show();
  ASSERT_NE(middle(image), paper());
  image.setImage(Image{.name = "nothing", .isTemplate = true, .pointSize = {}, .weight = {}});
  harness.settle();
  EXPECT_EQ(inkShare(pictureOf(image)), 0);
  EXPECT_EQ(middle(image), paper());
}

}  // namespace
}  // namespace quillmar
