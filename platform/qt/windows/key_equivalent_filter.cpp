#include "platform/qt/windows/key_equivalent_filter.h"

#include <QGuiApplication>
#include <utility>

#include "platform/qt/windows/key_presses.h"

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
    case QEvent::Hide:
      keyboardLost();
      return false;
    default:
      return false;
  }
}

bool KeyEquivalentFilter::usesPress(const QKeyEvent& event) {
  if (event.isAutoRepeat()) return isCapturing_ || usedKeys_.contains(event.nativeScanCode());
  const auto press = keyPressOf(event);
  if (!press || !perform_(*press)) return false;
  usedKeys_.insert(event.nativeScanCode());
  return true;
}

bool KeyEquivalentFilter::usesRelease(const QKeyEvent& event) {
  if (event.isAutoRepeat()) return usedKeys_.contains(event.nativeScanCode());
  if (usedKeys_.erase(event.nativeScanCode()) == 0) return false;
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
