// Delivers the key combinations that the desktop itself uses to one window: a keyboard grab on X11,
// an inhibitor of the compositor's shortcuts on Wayland.

#pragma once

#include <QPointer>
#include <QWindow>
#include <memory>

#include "platform/qt/windows/wayland_keyboard.h"

namespace quillmar {

/// The capture also ends when the process exits or crashes. Main thread.
class KeyboardCapture {
 public:
  KeyboardCapture() = default;
  ~KeyboardCapture() { end(); }
  KeyboardCapture(const KeyboardCapture&) = delete;
  KeyboardCapture& operator=(const KeyboardCapture&) = delete;

  /// Does nothing if the window captures the keyboard already, or if the desktop does not allow it.
  /// Precondition: the window has the keyboard focus.
  void begin(QWindow& window);
  void end();

  /// True from a request to the compositor until it is granted or the window gets the keyboard
  /// back. Meanwhile the compositor may take the keyboard from the window, to ask the user.
  bool awaitsPermission() const;

 private:
  /// Null without a grab.
  QPointer<QWindow> grabbing_;
  std::unique_ptr<ShortcutsInhibitor> inhibitor_;
  /// The window has got the keyboard since the request.
  bool isAnswered_ = false;
};

}  // namespace quillmar
