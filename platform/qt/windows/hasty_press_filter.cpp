#include "platform/qt/windows/hasty_press_filter.h"

#include <QApplication>

#include "platform/qt/windows/window_widget.h"

namespace quillmar {

namespace {

bool isOfModel(QWindow& window) {
  return dynamic_cast<WindowWidget*>(QWidget::find(window.winId())) != nullptr;
}

}  // namespace

HastyPressFilter::HastyPressFilter() {
  qApp->installEventFilter(this);
}

bool HastyPressFilter::eventFilter(QObject* watched, QEvent* event) {
  if (!watched->isWindowType()) return false;
  auto& window = static_cast<QWindow&>(*watched);
  switch (event->type()) {
    case QEvent::Expose:
      // Later ones tell of parts that other windows have covered.
      if (window.isExposed() && !seen_.contains(&window)) seen_[&window].start();
      return false;
    case QEvent::Show:
    case QEvent::Hide:
      seen_.erase(&window);
      return false;
    case QEvent::MouseButtonPress:
      return swallowsPress(window, static_cast<QMouseEvent&>(*event));
    case QEvent::MouseButtonDblClick:
      // Comes right after a press.
      return swallowed_.testFlag(static_cast<QMouseEvent&>(*event).button());
    case QEvent::MouseButtonRelease:
      return swallowsRelease(static_cast<QMouseEvent&>(*event));
    default:
      return false;
  }
}

bool HastyPressFilter::swallowsPress(QWindow& window, const QMouseEvent& press) {
  remember(window, press.timestamp());
  const bool swallows =
      isOfModel(window) && (cameUpJustNow(window) || followsOneElsewhere(press.timestamp()));
  // A press whose release never came, because its window went away, ends here.
  swallowed_.setFlag(press.button(), swallows);
  return swallows;
}

bool HastyPressFilter::swallowsRelease(const QMouseEvent& release) {
  const bool swallows = swallowed_.testFlag(release.button());
  swallowed_.setFlag(release.button(), false);
  return swallows;
}

void HastyPressFilter::remember(const QWindow& window, quint64 time) {
  if (last_ && last_->window != &window) elsewhere_ = last_;
  last_ = {.window = &window, .time = time};
}

bool HastyPressFilter::cameUpJustNow(const QWindow& window) const {
  const auto seen = seen_.find(&window);
  return seen == seen_.end() || seen->second.elapsed() < QApplication::doubleClickInterval();
}

bool HastyPressFilter::followsOneElsewhere(quint64 time) const {
  // Where the display's clock has begun anew the difference is a large one.
  return elsewhere_ &&
         time - elsewhere_->time < static_cast<quint64>(QApplication::doubleClickInterval());
}

}  // namespace quillmar
