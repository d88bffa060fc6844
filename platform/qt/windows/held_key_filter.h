// Keeps keys that are held down from answering questions that nobody has read.
//
// A key that is held down goes on producing presses, also in a window that has just come up in
// answer to it. On X11 the first of these look like any other, so what counts is whether the key
// was down already when the window got the keyboard; Wayland tells windows of new presses only.
//
// The X server tells a window which keys are down in the moment when it gives it the keyboard.
// Asked later it would count keys that were pressed for this very window.

#pragma once

#include <QAbstractNativeEventFilter>
#include <QKeyEvent>
#include <QObject>
#include <QWindow>
#include <set>

namespace quillmar {

/// Swallows presses of keys that press buttons or close windows, Return, Enter, Escape and Space,
/// until they have been released once. Main thread.
class HeldKeyFilter final : public QObject, public QAbstractNativeEventFilter {
 public:
  /// Precondition: a QApplication.
  HeldKeyFilter();

  /// From now on filters the events of this window, which the display knows already.
  void watch(QWindow& window);

  bool eventFilter(QObject* watched, QEvent* event) override;
  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  bool swallows(const QKeyEvent& press) const;
  void release(const QKeyEvent& release);

  /// The display's name for the window.
  WId window_ = 0;
  /// The event before gave the window the keyboard.
  bool hasJustGotKeyboard_ = false;
  /// Scan codes of the keys that were down when the window got the keyboard.
  std::set<quint32> held_;
};

}  // namespace quillmar
