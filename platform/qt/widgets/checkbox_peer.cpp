#include "platform/qt/widgets/checkbox_peer.h"

#include <algorithm>

#include "platform/qt/widgets/check_state.h"
#include "platform/qt/widgets/fonts.h"

namespace quillmar {

namespace {

/// In characters. Shorter lines are hard to read.
constexpr int shortestLine = 20;

}  // namespace

CheckboxPeer::CheckboxPeer(Checkbox& checkbox, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(checkbox, window, new CheckboxWidget(&parent)), checkbox_(checkbox) {
  QObject::connect(&box(), &QAbstractButton::clicked, receiver(), [this] { checkbox_.toggle(); });
  // Screen readers change the state without a click.
  QObject::connect(&box(), &QAbstractButton::toggled, receiver(), [this] {
    if (box().checkState() != checkState(checkbox_.state())) checkbox_.toggle();
  });
}

void CheckboxPeer::update() {
  box().setFont(desktopFont(checkbox_.font(), box()));
  // A single ampersand would be a mnemonic.
  box().setText(
      QString::fromStdString(checkbox_.title()).replace(QLatin1Char('&'), QStringLiteral("&&")));
  box().setTristate(checkbox_.state() == ControlState::mixed);
  box().setCheckState(checkState(checkbox_.state()));
}

int CheckboxPeer::firstLineMiddle(int /*width*/) const {
  return box().sizeHint().height() / 2;
}

Extent CheckboxPeer::contentHorizontal() const {
  const int whole = box().sizeHint().width();
  const int least =
      std::min(whole, box().widthFor(shortestLine * box().fontMetrics().averageCharWidth()));
  return {least, least, whole, whole};
}

Extent CheckboxPeer::contentVertical(int width) const {
  return Extent::fixed(box().heightForWidth(width));
}

}  // namespace quillmar
