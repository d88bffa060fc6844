// Ignores clicks on questions that the user cannot have read yet.
//
// Many people double-click where one click is enough. The second click hits whatever the first one
// has opened or uncovered under the pointer: a question that follows a confirmation, a confirmation
// that was opened from a menu, a panel below the one that has just closed.

#pragma once

#include <QElapsedTimer>
#include <QMouseEvent>
#include <QObject>
#include <QPointer>
#include <QWindow>
#include <map>
#include <optional>

namespace quillmar {

/// Filters the events of the whole application while it lives. In windows that ignore early clicks
/// it drops presses within the double-click interval after the window has appeared, or after a
/// press in another window or a menu. Activation does not count, so a click on a window that lies
/// behind others works. Main thread.
class EarlyClickFilter final : public QObject {
 public:
  /// Precondition: a QApplication.
  EarlyClickFilter();

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  struct Press {
    QPointer<const QWindow> window;
    /// In milliseconds of the display's clock.
    quint64 time = 0;
  };

  bool dropsPress(QWindow& window, const QMouseEvent& press);
  bool dropsRelease(const QMouseEvent& release);
  void remember(const QWindow& window, quint64 time);
  bool appearedJustNow(const QWindow& window) const;
  bool followsPressElsewhere(quint64 time) const;

  /// The time since each window appeared.
  std::map<const QWindow*, QElapsedTimer> appeared_;
  std::optional<Press> last_;
  /// The last press in a window other than that of `last_`.
  std::optional<Press> elsewhere_;
  /// Buttons whose press was dropped.
  Qt::MouseButtons dropped_;
};

}  // namespace quillmar
