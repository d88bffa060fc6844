// Which button looks like the one that Return presses.

#include <QColor>
#include <QImage>
#include <QPixmap>
#include <QScreen>
#include <QWidget>
#include <cstdlib>

#include <gtest/gtest.h>

#include "tests/conformance/widgets_fixture.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

/// Buttons that differ in nothing but their keys and the focus.
class DefaultButtonTest : public WidgetsFixture<QtUser> {
 protected:
  DefaultButtonTest() {
    defaultButton.setKeyEquivalent(keys::returnKey);
    cancel.setKeyEquivalent(keys::escape);
    field.setWidth(100);
  }

  void focus(View& view) {
    window->makeFirstResponder(&view);
    harness.settle();
    ASSERT_EQ(harness.focusedOnScreen(*window), &view);
  }

  /// What is on the screen, without repainting.
  static QImage seen(const View& view) {
    QWidget& widget = widgetOf(view);
    QWidget* const top = widget.window();
    const QPoint place = widget.mapTo(top, QPoint(0, 0));
    return top->screen()
        ->grabWindow(top->winId(), place.x(), place.y(), widget.width(), widget.height())
        .toImage();
  }

  /// Without a key and without the focus.
  QImage plain() const { return seen(other); }

  TextField& field = stack->add<TextField>();
  Button& defaultButton = stack->add<Button>("Button");
  Button& cancel = stack->add<Button>("Button");
  Button& other = stack->add<Button>("Button");
  Button& link = stack->add<Button>("Link", ButtonStyle::link);
};

TEST_F(DefaultButtonTest, WithTheFocusInAFieldItIsTheWindowsDefaultButton) {
  show();
  focus(field);
  EXPECT_NE(seen(defaultButton), plain());
  EXPECT_EQ(seen(cancel), plain());
}

TEST_F(DefaultButtonTest, AButtonThatHasTheFocusIsTheOnlyOne) {
  show();
  focus(defaultButton);
  const QImage focusedDefault = seen(defaultButton);
  focus(cancel);
  EXPECT_EQ(seen(cancel), focusedDefault);
  EXPECT_EQ(seen(defaultButton), plain());
}

TEST_F(DefaultButtonTest, WhenTheFocusLeavesTheButtonsTheDefaultButtonIsItAgain) {
  show();
  focus(field);
  const QImage before = seen(defaultButton);
  focus(cancel);
  ASSERT_NE(seen(defaultButton), before);
  focus(field);
  EXPECT_EQ(seen(defaultButton), before);
  EXPECT_EQ(seen(cancel), plain());
}

TEST_F(DefaultButtonTest, ReturnPressesALinkThatHasTheFocusAndNoButtonLooksLikeIt) {
  show();
  focus(link);
  EXPECT_EQ(seen(defaultButton), plain());
}

TEST_F(DefaultButtonTest, TheFocusIsSeenOnTheDefaultButtonToo) {
  show();
  focus(field);
  const QImage withoutFocus = seen(defaultButton);
  focus(defaultButton);
  EXPECT_NE(seen(defaultButton), withoutFocus);
}

TEST_F(DefaultButtonTest, TheDefaultButtonIsFilledAndAFieldWithTheFocusHasARing) {
  show();
  focus(field);
  const QColor accent = widgetOf(field).palette().color(QPalette::Highlight);
  const auto amountOf = [&](const QImage& image) {
    int count = 0;
    for (int x = 0; x < image.width(); ++x) {
      const QColor color = image.pixelColor(x, image.height() / 2);
      const int off = std::abs(color.red() - accent.red()) +
                      std::abs(color.green() - accent.green()) +
                      std::abs(color.blue() - accent.blue());
      count += off < 100 ? 1 : 0;
    }
    return count;
  };
  // Across the middle: the two sides of the ring, and the whole button but its title.
  EXPECT_EQ(amountOf(seen(field)), 4);
  EXPECT_GT(amountOf(seen(defaultButton)), widgetOf(defaultButton).width() / 3);
  focus(other);
  EXPECT_EQ(amountOf(seen(field)), 0);
}

}  // namespace
}  // namespace quillmar
