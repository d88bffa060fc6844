// Keeps a key that is held down from answering a question that the user has not read.
//
// A key that is held down repeats, also in a window that it has just opened. On X11 the first
// repeated press looks like a new one, so the filter drops presses of keys that were already down
// when the window got the keyboard. Wayland reports new presses only.
//
// The X server tells a window which keys are down when it gives it the keyboard. A later request
// would include keys that were pressed for this window.

#pragma once

#include <QAbstractNativeEventFilter>
#include <QKeyEvent>
#include <QObject>
#include <QWindow>
#include <set>

namespace quillmar {

/// Drops presses of the keys that press buttons or close windows (Return, Enter, Escape, Space)
/// until they have been released. Main thread.
class HeldKeyFilter final : public QObject, public QAbstractNativeEventFilter {
 public:
  /// Precondition: a QApplication.
  HeldKeyFilter();

  /// Filters the events of this window from now on. Precondition: it exists on the display.
  void watch(QWindow& window);

  bool eventFilter(QObject* watched, QEvent* event) override;
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  bool drops(const QKeyEvent& press) const;
  void release(const QKeyEvent& release);

  /// The window's id on the display.
  WId window_ = 0;
  /// The previous event gave the window the keyboard.
  bool hasJustGotKeyboard_ = false;
  /// Scan codes of the keys that were down when the window got the keyboard.
  std::set<quint32> held_;
};

}  // namespace quillmar
