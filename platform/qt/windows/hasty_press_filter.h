// Keeps presses of the mouse that were meant for something else from answering questions that
// nobody has read.
//
// Many people double-click where one click would do. The second click falls on whatever the first
// has brought up, or laid bare, under the pointer: a question behind a confirmation, a confirmation
// behind a menu, a panel below the one that has just closed.

#pragma once

#include <QElapsedTimer>
#include <QMouseEvent>
#include <QObject>
#include <QPointer>
#include <QWindow>
#include <map>
#include <optional>

namespace quillmar {

/// Filters the events of the whole application while it lives. Swallows presses in the windows of
/// the model, not in menus, that come sooner than the second click of a double click may: after the
/// window came up, or after a press in another window or a menu. Not activation counts but coming
/// up, so a click on a window that lies behind others works. Main thread.
class HastyPressFilter final : public QObject {
 public:
  /// Precondition: a QApplication.
  HastyPressFilter();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Press {
    QPointer<const QWindow> window;
    /// In milliseconds, of the display's clock.
    quint64 time = 0;
  };

  bool swallowsPress(QWindow& window, const QMouseEvent& press);
  bool swallowsRelease(const QMouseEvent& release);
  void remember(const QWindow& window, quint64 time);
  bool cameUpJustNow(const QWindow& window) const;
  bool followsOneElsewhere(quint64 time) const;

  /// Since when each window is to be seen.
  std::map<const QWindow*, QElapsedTimer> seen_;
  std::optional<Press> last_;
  /// The last one in another window than that of `last_`.
  std::optional<Press> elsewhere_;
  /// Those whose press was swallowed.
  Qt::MouseButtons swallowed_;
};

}  // namespace quillmar
