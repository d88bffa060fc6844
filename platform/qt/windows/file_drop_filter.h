// Offers files that the user drags over a window to its views before any widget uses them.
// Otherwise a text field would take them as text.

#pragma once

#include <QDropEvent>
#include <QObject>
#include <QPoint>
#include <QWindow>
#include <functional>
#include <string>
#include <vector>

namespace quillmar {

/// Handles drags that contain a local file; widgets get all others. Every drop is a copy, so the
/// source program keeps its files. Main thread.
class FileDropFilter final : public QObject {
 public:
  /// `position` is in the window's coordinates; `files` holds absolute paths.
  struct Handlers {
    /// True if the files could be dropped there.
    std::function<bool(const QPoint& position, const std::vector<std::string>& files)> drag;
    /// True if the files were taken. May destroy the window.
    std::function<bool(const QPoint& position, const std::vector<std::string>& files)> drop;
  };

  explicit FileDropFilter(Handlers handlers) : handlers_(std::move(handlers)) {}

  /// Filters the events of this window from now on.
  void watch(QWindow& window) { window.installEventFilter(this); }

  bool eventFilter(QObject* watched, QEvent* event) override;

 private:
  Handlers handlers_;
};

}  // namespace quillmar
