// Detects that another program has destroyed a window of this program, which X11 allows. The
// toolkit does not report it.

#pragma once

#include <QAbstractNativeEventFilter>
#include <QWindow>
#include <functional>

namespace quillmar {

/// Main thread.
class DestroyedWindowFilter final : public QAbstractNativeEventFilter {
 public:
  /// `onDestroyed` is called while the toolkit handles an event. Precondition: a QApplication.
  explicit DestroyedWindowFilter(std::function<void()> onDestroyed);

  /// Watches this window on the display from now on; 0 for none.
  void watch(WId window) { window_ = window; }

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  std::function<void()> onDestroyed_;
  WId window_ = 0;
};

}  // namespace quillmar
