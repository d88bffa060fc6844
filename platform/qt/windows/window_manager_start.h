// Keeps the keyboard in a window when the window manager of an X display starts after the window
// was shown. When a window manager starts, it puts frames around existing windows. They lose the
// keyboard, and some window managers do not give it back.

#pragma once

#include <QAbstractNativeEventFilter>
#include <QPointer>
#include <QWidget>

#include <xcb/xcb.h>

namespace quillmar {

/// Activates one window again when a window manager starts. Main thread.
class WindowManagerStart final : public QAbstractNativeEventFilter {
 public:
  /// The only instance. Precondition: a QApplication on an X display.
  static WindowManagerStart& shared();

  /// Sets the window to reactivate. It was shown while no window manager was running.
  void setWindow(QWidget& window) { window_ = &window; }

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  explicit WindowManagerStart(xcb_connection_t* connection);

  xcb_connection_t* connection_;
  xcb_window_t root_;
  /// The property of the root window that a window manager sets when it starts.
  xcb_atom_t check_;
  QPointer<QWidget> window_;
};

}  // namespace quillmar
