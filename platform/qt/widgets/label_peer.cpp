#include "platform/qt/widgets/label_peer.h"

#include <algorithm>

#include "platform/qt/widgets/fonts.h"

namespace quillmar {

namespace {

/// Where nothing states how wide a text that wraps should be, lines of this many characters are
/// good to read.
constexpr int comfortableLine = 60;
/// Narrower lines are not.
constexpr int shortestLine = 8;

}  // namespace

LabelPeer::LabelPeer(Label& label, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(label, window, new TextWidget(&parent)), label_(label) {}

void LabelPeer::update() {
  text().setFont(desktopFont(label_.font(), text()));
  text().setSecondary(label_.color() != TextColor::label);
  text().setTextAlignment(label_.alignment() == TextAlignment::center ? Qt::AlignHCenter
                                                                      : Qt::AlignLeft);
  text().setWraps(label_.wraps());
  text().setSelectable(label_.selectable());
  text().setText(QString::fromStdString(label_.text()));
}

int LabelPeer::firstLineMiddle(int /*width*/) const {
  return text().fontMetrics().height() / 2;
}

Extent LabelPeer::contentHorizontal() const {
  const int whole = text().naturalWidth();
  const int character = text().fontMetrics().averageCharWidth();
  const int least = std::min(whole, shortestLine * character);
  if (!label_.wraps()) return {least, whole, whole, whole};
  return {least, least, std::min(whole, comfortableLine * character), whole};
}

Extent LabelPeer::contentVertical(int width) const {
  const int wanted = text().heightForWidth(width);
  return {std::min(wanted, text().fontMetrics().height()), wanted, wanted, wanted};
}

}  // namespace quillmar
