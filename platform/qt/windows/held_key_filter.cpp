#include "platform/qt/windows/held_key_filter.h"

#include "platform/qt/windows/x11_requests.h"

namespace quillmar {

namespace {

bool isAnswer(int key) {
  switch (key) {
    case Qt::Key_Return:
    case Qt::Key_Enter:
    case Qt::Key_Escape:
    case Qt::Key_Space:
    case Qt::Key_Select:
      return true;
    default:
      return false;
  }
}

std::set<quint32> keysThatAreDown() {
  std::set<quint32> down;
  if (xcb_connection_t* const x11 = x11Connection()) {
    for (const std::uint8_t code : x11KeysDown(x11)) down.insert(code);
  }
  return down;
}

}  // namespace

bool HeldKeyFilter::eventFilter(QObject* /*watched*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::FocusIn:
      held_ = keysThatAreDown();
      return false;
    case QEvent::KeyPress:
      return swallows(*static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease:
      release(*static_cast<QKeyEvent*>(event));
      return false;
    default:
      return false;
  }
}

bool HeldKeyFilter::swallows(const QKeyEvent& press) const {
  return isAnswer(press.key()) && (press.isAutoRepeat() || held_.contains(press.nativeScanCode()));
}

void HeldKeyFilter::release(const QKeyEvent& release) {
  // Between two presses of a key that is held down there is a release on X11, but it stays down.
  if (held_.contains(release.nativeScanCode()) &&
      !keysThatAreDown().contains(release.nativeScanCode())) {
    held_.erase(release.nativeScanCode());
  }
}

}  // namespace quillmar
