#include "platform/qt/widgets/widget_peer.h"

#include <QFocusEvent>
#include <algorithm>
#include <cmath>

#include "platform/qt/widgets/accessible_widgets.h"
#include "platform/qt/windows/qt_window_peer.h"

namespace quillmar {

int pixels(double length) {
  return static_cast<int>(std::ceil(std::clamp<double>(length, 0, Extent::unlimited)));
}

WidgetPeer::WidgetPeer(View& view, QtWindowPeer& window, QWidget* widget)
    : view_(view), window_(window), widget_(widget) {
  widget_->installEventFilter(&focusWatcher_);
}

WidgetPeer::~WidgetPeer() {
  if (!widget_) return;
  const QtWindowPeer::ProgramFocusChange programActs(window_);
  // The widget may be in the middle of an event.
  widget_->removeEventFilter(&focusWatcher_);
  widget_->hide();
  widget_->setParent(nullptr);
  widget_->deleteLater();
}

void WidgetPeer::viewChanged() {
  const QtWindowPeer::ProgramFocusChange programActs(window_);
  setAccessibilityRole(*widget_, view_.accessibilityRole());
  widget_->setEnabled(view_.enabled());
  widget_->setVisible(!view_.hidden());
  widget_->setAccessibleName(QString::fromStdString(view_.accessibilityLabel()));
  update();
  window_.contentChanged();
}

int WidgetPeer::maximumWidth() const {
  return view_.maximumWidth() ? pixels(*view_.maximumWidth()) : Extent::unlimited;
}

int WidgetPeer::maximumHeight() const {
  return view_.maximumHeight() ? pixels(*view_.maximumHeight()) : Extent::unlimited;
}

Extent WidgetPeer::horizontal() const {
  Extent extent = contentHorizontal();
  if (view_.width()) {
    extent.preferred = std::max(pixels(*view_.width()), extent.unclipped);
    extent.unclipped = extent.preferred;
    extent.maximum =
        growsBeyondStatedWidth() ? std::max(extent.maximum, extent.preferred) : extent.preferred;
  }
  return limited(extent, maximumWidth());
}

Extent WidgetPeer::vertical(int width) const {
  Extent extent = contentVertical(width);
  if (view_.height()) {
    const int stated = pixels(*view_.height());
    if (scrolls()) {
      extent = limited({extent.minimum, extent.unclipped, stated, stated}, stated);
    } else {
      extent.preferred = std::max(stated, extent.preferred);
      extent.unclipped = extent.preferred;
      extent.maximum = std::max(extent.maximum, extent.preferred);
    }
  }
  return limited(extent, maximumHeight());
}

void WidgetPeer::takeFocus() {
  // As if Tab had been pressed, so that a field selects its text and the focus is drawn.
  keyWidget().setFocus(Qt::TabFocusReason);
}

bool WidgetPeer::FocusWatcher::eventFilter(QObject* watched, QEvent* event) {
  if (!peer_.widget_ || watched != &peer_.keyWidget()) return false;
  if (event->type() == QEvent::FocusIn) peer_.window_.userFocused(peer_.view_);
  if (event->type() == QEvent::FocusOut) {
    const Qt::FocusReason reason = static_cast<QFocusEvent*>(event)->reason();
    if (reason == Qt::ActiveWindowFocusReason || reason == Qt::PopupFocusReason) {
      peer_.window_.keyboardLost();
    }
  }
  return false;
}

}  // namespace quillmar
