#include "platform/qt/widgets/scroll_view_peer.h"

#include <QScrollBar>
#include <algorithm>

#include "platform/qt/widgets/make_widgets.h"
#include "platform/qt/windows/qt_window_peer.h"

namespace quillmar {

namespace {

/// Lines of text that a view that scrolls shows at least.
constexpr int fewestLines = 4;

}  // namespace

ScrollViewPeer::ScrollViewPeer(ScrollView& scrollView, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(scrollView, window, new QScrollArea(&parent)), scrollView_(scrollView) {
  area().setFrameShape(QFrame::NoFrame);
  area().setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  // The background is the window's.
  area().viewport()->setAutoFillBackground(false);
  area().setFocusPolicy(Qt::NoFocus);
}

void ScrollViewPeer::subviewsChanged() {
  const QtWindowPeer::ProgramFocusChange programActs(window());
  if (content() == nullptr) makeWidgets(scrollView_.content(), window(), *area().viewport());
  area().setWidget(&content()->widget());
  content()->widget().setAutoFillBackground(false);
  window().contentChanged();
}

void ScrollViewPeer::place(const QRect& frame) {
  WidgetPeer::place(frame);
  if (content() == nullptr) return;
  int width = frame.width();
  int height = content()->vertical(width).preferred;
  if (height > frame.height()) {
    width = std::max(0, width - barWidth());
    height = content()->vertical(width).preferred;
  }
  content()->place(
      QRect(content()->widget().pos(), QSize(width, std::max(height, frame.height()))));
}

bool ScrollViewPeer::scroll(ScrollStep step) {
  QScrollBar& bar = *area().verticalScrollBar();
  if (bar.minimum() == bar.maximum()) return false;
  switch (step) {
    case ScrollStep::pageUp:
      bar.triggerAction(QAbstractSlider::SliderPageStepSub);
      break;
    case ScrollStep::pageDown:
      bar.triggerAction(QAbstractSlider::SliderPageStepAdd);
      break;
    case ScrollStep::beginning:
      bar.triggerAction(QAbstractSlider::SliderToMinimum);
      break;
    case ScrollStep::end:
      bar.triggerAction(QAbstractSlider::SliderToMaximum);
      break;
  }
  return true;
}

void ScrollViewPeer::reveal(QWidget& widget) {
  // Room for a label above it.
  const int above = area().fontMetrics().lineSpacing();
  area().ensureWidgetVisible(&widget, 0, above);
}

Extent ScrollViewPeer::contentHorizontal() const {
  Extent extent = content() == nullptr ? Extent() : content()->horizontal();
  extent.maximum = Extent::unlimited;
  return extent;
}

Extent ScrollViewPeer::contentVertical(int width) const {
  const int whole = content() == nullptr ? 0 : content()->vertical(width).preferred;
  const int line = area().fontMetrics().lineSpacing();
  return {std::min(whole, line), std::min(whole, fewestLines * line), whole, whole};
}

WidgetPeer* ScrollViewPeer::content() const {
  View& content = scrollView_.content();
  return content.peer() == nullptr ? nullptr : &widgetPeer(content);
}

int ScrollViewPeer::barWidth() const {
  return area().verticalScrollBar()->sizeHint().width();
}

}  // namespace quillmar
