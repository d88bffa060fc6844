#include "platform/qt/widgets/pop_up_button_peer.h"

#include <QPainter>
#include <QWheelEvent>

#include "platform/qt/widgets/focus_ring.h"

namespace quillmar {

void PopUpWidget::wheelEvent(QWheelEvent* event) {
  event->ignore();
}

void PopUpWidget::paintEvent(QPaintEvent* event) {
  QComboBox::paintEvent(event);
  if (!hasFocus()) return;
  QPainter painter(this);
  drawFocusRing(painter, rect(), palette().color(QPalette::Highlight));
}

PopUpButtonPeer::PopUpButtonPeer(PopUpButton& popUp, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(popUp, window, new PopUpWidget(&parent)), popUp_(popUp) {
  for (const std::string& title : popUp_.titles()) box().addItem(QString::fromStdString(title));
  // Only the user's choices.
  QObject::connect(&box(), &QComboBox::activated, receiver(),
                   [this](int index) { popUp_.select(static_cast<std::size_t>(index)); });
}

void PopUpButtonPeer::update() {
  const auto index = popUp_.selectedIndex();
  box().setCurrentIndex(index ? static_cast<int>(*index) : -1);
}

Extent PopUpButtonPeer::contentHorizontal() const {
  const int wanted = box().sizeHint().width();
  return {box().minimumSizeHint().height(), wanted, wanted, wanted};
}

Extent PopUpButtonPeer::contentVertical(int /*width*/) const {
  return Extent::fixed(box().sizeHint().height());
}

}  // namespace quillmar
