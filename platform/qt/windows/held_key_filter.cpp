#include "platform/qt/windows/held_key_filter.h"

#include <QCoreApplication>

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

}  // namespace

HeldKeyFilter::HeldKeyFilter() {
  QCoreApplication::instance()->installNativeEventFilter(this);
}

void HeldKeyFilter::watch(QWindow& window) {
  window.installEventFilter(this);
  window_ = window.winId();
  if (xcb_connection_t* const x11 = x11Connection()) {
    x11SelectAlso(x11, static_cast<xcb_window_t>(window_), XCB_EVENT_MASK_KEYMAP_STATE);
  }
}

bool HeldKeyFilter::eventFilter(QObject* /*watched*/, QEvent* event) {
  switch (event->type()) {
    case QEvent::KeyPress:
      return drops(*static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease:
      release(*static_cast<QKeyEvent*>(event));
      return false;
    default:
      return false;
  }
}

bool HeldKeyFilter::nativeEventFilter(const QByteArray& eventType, void* message,
                                      qintptr* /*result*/) {
  if (eventType != "xcb_generic_event_t") return false;
  const auto& event = *static_cast<const xcb_generic_event_t*>(message);
  const int type = x11EventType(event);
  if (type == XCB_KEYMAP_NOTIFY && hasJustGotKeyboard_) {
    // The server sends this event also when the pointer enters the window.
    held_ = x11KeysDown(reinterpret_cast<const xcb_keymap_notify_event_t&>(event));
  }
  hasJustGotKeyboard_ =
      type == XCB_FOCUS_IN && reinterpret_cast<const xcb_focus_in_event_t&>(event).event ==
                                  static_cast<xcb_window_t>(window_);
  return false;
}

bool HeldKeyFilter::drops(const QKeyEvent& press) const {
  return isAnswer(press.key()) && (press.isAutoRepeat() || held_.contains(press.nativeScanCode()));
}

void HeldKeyFilter::release(const QKeyEvent& release) {
  // X11 reports a release between two repeated presses although the key is still down.
  if (held_.contains(release.nativeScanCode()) && !x11IsKeyDown(release.nativeScanCode())) {
    held_.erase(release.nativeScanCode());
  }
}

}  // namespace quillmar
