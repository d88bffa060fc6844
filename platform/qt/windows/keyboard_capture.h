// Delivers the key combinations that the desktop itself uses to one window: a keyboard grab on X11,
// an inhibitor of the compositor's shortcuts on Wayland.

#pragma once

#include <QPointer>
#include <QWindow>

#include "platform/qt/windows/wayland_keyboard.h"

namespace quillmar {

/// Ends with the process, however that ends. Main thread.
class KeyboardCapture {
 public:
  KeyboardCapture() = default;
  ~KeyboardCapture() { end(); }
  KeyboardCapture(const KeyboardCapture&) = delete;
  KeyboardCapture& operator=(const KeyboardCapture&) = delete;

  /// Does nothing if the window captures the keyboard already, or if the desktop does not allow it.
  void begin(QWindow& window);
  void end();

 private:
  /// Null without a grab.
  QPointer<QWindow> grabbing_;
  ShortcutsInhibitor inhibitor_;
};

}  // namespace quillmar
