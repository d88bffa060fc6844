// Keeps the keyboard in a window when the window manager of an X display starts after the window
// was shown. A window manager that starts puts the windows that are there into frames, which takes
// the keyboard from them, and does not always give it back.

#pragma once

#include <QAbstractNativeEventFilter>
#include <QPointer>
#include <QWidget>

#include <xcb/xcb.h>

namespace quillmar {

/// Activates one window again when a window manager starts. Main thread.
class WindowManagerStart final : public QAbstractNativeEventFilter {
 public:
  /// The one of the process. Precondition: a QApplication on an X display.
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
