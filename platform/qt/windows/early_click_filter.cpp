#include "platform/qt/windows/early_click_filter.h"

#include <QApplication>

#include "platform/qt/windows/window_widget.h"

namespace quillmar {

namespace {

bool ignoresEarlyClicks(QWindow& window) {
  const auto* const widget = dynamic_cast<WindowWidget*>(QWidget::find(window.winId()));
  return widget != nullptr && widget->ignoresEarlyClicks();
}

}  // namespace

EarlyClickFilter::EarlyClickFilter() {
  qApp->installEventFilter(this);
}

bool EarlyClickFilter::eventFilter(QObject* watched, QEvent* event) {
  if (!watched->isWindowType()) return false;
  auto& window = static_cast<QWindow&>(*watched);
  switch (event->type()) {
    case QEvent::Expose:
      // Later exposures are about parts that other windows have covered.
      if (window.isExposed() && !appeared_.contains(&window)) appeared_[&window].start();
      return false;
    case QEvent::Show:
    case QEvent::Hide:
      appeared_.erase(&window);
      return false;
    case QEvent::MouseButtonPress:
      return dropsPress(window, static_cast<QMouseEvent&>(*event));
    case QEvent::MouseButtonDblClick:
      // Follows a press at once.
      return dropped_.testFlag(static_cast<QMouseEvent&>(*event).button());
    case QEvent::MouseButtonRelease:
      return dropsRelease(static_cast<QMouseEvent&>(*event));
    default:
      return false;
  }
}

bool EarlyClickFilter::dropsPress(QWindow& window, const QMouseEvent& press) {
  remember(window, press.timestamp());
  const bool drops = ignoresEarlyClicks(window) &&
                     (appearedJustNow(window) || followsPressElsewhere(press.timestamp()));
  // A press whose release never came, because its window went away, ends here.
  dropped_.setFlag(press.button(), drops);
  return drops;
}

bool EarlyClickFilter::dropsRelease(const QMouseEvent& release) {
  const bool drops = dropped_.testFlag(release.button());
  dropped_.setFlag(release.button(), false);
  return drops;
}

void EarlyClickFilter::remember(const QWindow& window, quint64 time) {
  if (last_ && last_->window != &window) elsewhere_ = last_;
  last_ = {.window = &window, .time = time};
}

bool EarlyClickFilter::appearedJustNow(const QWindow& window) const {
  const auto appeared = appeared_.find(&window);
  return appeared == appeared_.end() ||
         appeared->second.elapsed() < QApplication::doubleClickInterval();
}

bool EarlyClickFilter::followsPressElsewhere(quint64 time) const {
  // The display's clock may have started again from 0; the difference is large then.
  return elsewhere_ &&
         time - elsewhere_->time < static_cast<quint64>(QApplication::doubleClickInterval());
}

}  // namespace quillmar
