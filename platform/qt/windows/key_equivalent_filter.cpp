#include "platform/qt/windows/key_equivalent_filter.h"

#include <QGuiApplication>
#include <utility>

#include "platform/qt/windows/key_presses.h"
#include "platform/qt/windows/x11_requests.h"

namespace quillmar {

KeyEquivalentFilter::KeyEquivalentFilter(Perform perform) : perform_(std::move(perform)) {}

void KeyEquivalentFilter::watch(QWindow& window) {
  keyboardLost();
  window_ = &window;
  window.installEventFilter(this);
}

void KeyEquivalentFilter::setCapturing(bool capturing) {
  isCapturing_ = capturing;
  updateCapture();
}

bool KeyEquivalentFilter::eventFilter(QObject* watched, QEvent* event) {
  if (watched != window_) return false;
  switch (event->type()) {
    case QEvent::KeyPress:
      return usesPress(*static_cast<QKeyEvent*>(event));
    case QEvent::KeyRelease:
      return usesRelease(*static_cast<QKeyEvent*>(event));
    case QEvent::FocusIn:
      updateCapture();
      return false;
    case QEvent::FocusOut:
      if (!awaitsPermission()) keyboardLost();
      return false;
    case QEvent::Hide:
      keyboardLost();
      return false;
    default:
      return false;
  }
}

bool KeyEquivalentFilter::usesPress(const QKeyEvent& event) {
  if (usedKeys_.contains(event.nativeScanCode())) return true;
  if (event.isAutoRepeat()) return isCapturing_;
  const auto press = keyPressOf(event);
  if (!press) return false;
  // Before the view ends the capture.
  usedKeys_.insert(event.nativeScanCode());
  if (perform_(*press)) return true;
  usedKeys_.erase(event.nativeScanCode());
  return false;
}

bool KeyEquivalentFilter::usesRelease(const QKeyEvent& event) {
  const quint32 key = event.nativeScanCode();
  if (!usedKeys_.contains(key)) return false;
  // X11 reports a release before each repeated press, which the toolkit does not always recognise.
  if (event.isAutoRepeat() || x11IsKeyDown(key)) return true;
  usedKeys_.erase(key);
  updateCapture();
  return true;
}

void KeyEquivalentFilter::updateCapture() {
  if (isCapturing_ && window_ == QGuiApplication::focusWindow()) {
    capture_.begin(*window_);
  } else if (usedKeys_.empty()) {
    capture_.end();
  }
}

void KeyEquivalentFilter::keyboardLost() {
  usedKeys_.clear();
  capture_.end();
}

}  // namespace quillmar
