// Offers the key presses of a window to its views before any widget uses them, and captures the
// keyboard for a view that waits for a key combination.

#pragma once

#include <QKeyEvent>
#include <QObject>
#include <QPointer>
#include <QWindow>
#include <functional>
#include <set>

#include "platform/key_press.h"
#include "platform/qt/windows/keyboard_capture.h"

namespace quillmar {

/// A key that a view has used belongs to that view until it is released: its repeated presses are
/// dropped, and the capture lasts until then. Otherwise, if the user held Alt+F4 a little
/// longer, the combination would be recorded and then close the window. Main thread.
class KeyEquivalentFilter final : public QObject {
 public:
  using Perform = std::function<bool(const KeyPress& press)>;

  /// `perform` returns true if a view has used the key.
  explicit KeyEquivalentFilter(Perform perform);

  /// Filters the events of this window from now on.
  void watch(QWindow& window);

  /// If true, the desktop's key combinations are delivered to the window too, while it has the
  /// keyboard.
  void setCapturing(bool capturing);

  /// True while the window has lost the keyboard only because the desktop asks the user whether it
  /// may capture the keyboard.
  bool awaitsPermission() const { return capture_.awaitsPermission(); }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool usesPress(const QKeyEvent& event);
  bool usesRelease(const QKeyEvent& event);
  void updateCapture();
  void keyboardLost();

  Perform perform_;
  QPointer<QWindow> window_;
  bool isCapturing_ = false;
  KeyboardCapture capture_;
  /// Scan codes of keys that views have used and that have not been released yet.
  std::set<quint32> usedKeys_;
};

}  // namespace quillmar
