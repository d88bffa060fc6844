#include "platform/qt/windows/keyboard_capture.h"

#include "platform/qt/windows/x11_requests.h"

namespace quillmar {

void KeyboardCapture::begin(QWindow& window) {
  if (x11Connection() != nullptr) {
    if (grabbing_ == nullptr && window.setKeyboardGrabEnabled(true)) grabbing_ = &window;
  } else if (WaylandKeyboard* const keyboard = WaylandKeyboard::shared()) {
    isAnswered_ = inhibitor_ != nullptr;
    if (!inhibitor_) inhibitor_ = keyboard->inhibitShortcuts(window);
  }
}

bool KeyboardCapture::awaitsPermission() const {
  return inhibitor_ != nullptr && !inhibitor_->isGranted() && !isAnswered_;
}

void KeyboardCapture::end() {
  if (grabbing_ != nullptr) grabbing_->setKeyboardGrabEnabled(false);
  grabbing_ = nullptr;
  inhibitor_.reset();
}

}  // namespace quillmar
