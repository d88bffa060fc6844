// How a text is drawn, and what is left of it where it has no room.

#include "platform/qt/widgets/text_widget.h"

#include <QPixmap>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "platform/qt/widgets/visible_text.h"
#include "tests/qt/pictures.h"
#include "tests/qt/qt_user.h"

namespace quillmar {
namespace {

QImage pictureOfText(const QString& text, const QSize& size, bool wraps = false,
                     Qt::Alignment alignment = Qt::AlignLeft) {
  TextWidget widget(nullptr);
  widget.setText(text);
  widget.setWraps(wraps);
  widget.setTextAlignment(alignment);
  widget.resize(size);
  return widget.grab().toImage();
}

QSize roomFor(const QString& text) {
  TextWidget widget(nullptr);
  widget.setText(text);
  return widget.sizeHint();
}

TEST(TextWidgetTest, ATextWithoutRoomEndsInAnEllipsis) {
  const QSize room = roomFor("The beginning…");
  const QImage cut = pictureOfText("The beginning and all the rest of it", room);
  EXPECT_EQ(inkFrame(cut), inkFrame(pictureOfText("The beginning…", room)));
  EXPECT_NE(cut, pictureOfText("The beginning", room));
}

TEST(TextWidgetTest, LinesWithoutRoomAreLeftOutAndTheLastOneEndsInAnEllipsis) {
  const QSize room = roomFor("first line\nsecond line…");
  const QImage cut = pictureOfText("first line\nsecond line\nthird line", room);
  EXPECT_EQ(inkFrame(cut), inkFrame(pictureOfText("first line\nsecond line…", room)));
}

TEST(TextWidgetTest, ATextThatFitsHasNoEllipsis) {
  const QSize room = roomFor("The whole text");
  const QSize more = room + QSize(100, 100);
  EXPECT_EQ(inkFrame(pictureOfText("The whole text", room)),
            inkFrame(pictureOfText("The whole text", more)));
}

TEST(TextWidgetTest, ACenteredTextStandsInTheMiddleOfItsLines) {
  const QSize room = roomFor("Text") + QSize(200, 0);
  const QRect left = inkFrame(pictureOfText("Text", room));
  const QRect middle = inkFrame(pictureOfText("Text", room, false, Qt::AlignHCenter));
  EXPECT_LT(left.left(), 5);
  EXPECT_NEAR(middle.center().x(), room.width() / 2, 2);
}

TEST(TextWidgetTest, AWrappedTextIsDrawnInItsLines) {
  const QSize room = roomFor("first words\nsecond words");
  EXPECT_EQ(pictureOfText("first words second words", room, true),
            pictureOfText("first words\nsecond words", room));
}

TEST(TextWidgetTest, AnOverrideOfTheDirectionIsShownAndNotObeyed) {
  const QString text = QStringLiteral("true \u202e; touch x\u2069");
  const QString seen = QStringLiteral("true ‹U+202E›; touch x‹U+2069›");
  const QSize room = roomFor(seen);
  EXPECT_EQ(roomFor(text), room);
  EXPECT_EQ(pictureOfText(text, room), pictureOfText(seen, room));
}

TEST(TextWidgetTest, WhatCannotBeSeenIsShownByItsNumber) {
  const std::vector<std::pair<QString, QString>> texts = {
      {QStringLiteral("rm one\u2029rm two"), QStringLiteral("rm one‹U+2029›rm two")},
      {QStringLiteral("a\r\n\fb\u0085c"), QStringLiteral("a‹U+000D›\n‹U+000C›b‹U+0085›c")},
      {QStringLiteral("a\u200b\u00ad\ufeff\u3164b"),
       QStringLiteral("a‹U+200B›‹U+00AD›‹U+FEFF›‹U+3164›b")},
      {QStringLiteral("ls\U000E0041"), QStringLiteral("ls‹U+E0041›")},
      {QStringLiteral("o\u200dne"), QStringLiteral("o‹U+200D›ne")},
  };
  for (const auto& [text, seen] : texts) EXPECT_EQ(withVisibleCharacters(text), seen);
}

TEST(TextWidgetTest, WhatWritingNeedsIsLeftAsItIs) {
  for (const char* text : {"one\ttwo\nthree", "👩‍💻 ❤️", "می‌خواهم",
                           "٢٠٢٦؀", "e\u0301 ü", "a b"}) {
    EXPECT_EQ(withVisibleCharacters(text), text);
  }
}

TEST(TextWidgetTest, AVeryLongWordIsBrokenAnywhere) {
  TextWidget widget(nullptr);
  widget.setWraps(true);
  widget.setText(QStringLiteral("short ") + QString(300'000, u'x'));
  const int lines = widget.heightForWidth(320) / widget.fontMetrics().lineSpacing();
  const int perLine = 320 / widget.fontMetrics().horizontalAdvance(u'x');
  EXPECT_NEAR(lines, 300'000 / perLine, 300'000 / perLine / 10);
}

TEST(TextWidgetTest, MarkupIsDrawnToTheLetter) {
  EXPECT_GT(roomFor("<b>Text</b>").width(), 1.5 * roomFor("Text").width());
  EXPECT_GT(roomFor("&&Text").width(), roomFor("&Text").width());
}

}  // namespace
}  // namespace quillmar
