// Keeps keys that are held down from answering questions that nobody has read.
//
// A key that is held down goes on producing presses, also in a window that has just come up in
// answer to it. On X11 the first of these look like any other, so what counts is whether the key
// was down already when the window got the keyboard; Wayland tells windows of new presses only.

#pragma once

#include <QKeyEvent>
#include <QObject>
#include <set>

namespace quillmar {

/// Filters the events of a QWindow. Swallows presses of keys that press buttons or close windows,
/// Return, Enter, Escape and Space, until they have been released once.
class HeldKeyFilter final : public QObject {
 public:
  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  bool swallows(const QKeyEvent& press) const;
  void release(const QKeyEvent& release);

  /// Scan codes of the keys that were down when the window got the keyboard.
  std::set<quint32> held_;
};

}  // namespace quillmar
