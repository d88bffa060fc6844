// Notices that another program has destroyed a window of this one, which the toolkit does not. Only
// X11 allows that.

#pragma once

#include <QAbstractNativeEventFilter>
#include <QWindow>
#include <functional>

namespace quillmar {

/// Main thread.
class DestroyedWindowFilter final : public QAbstractNativeEventFilter {
 public:
  /// `onDestroyed` is called in the middle of an event of the toolkit. Precondition: a
  /// QApplication.
  explicit DestroyedWindowFilter(std::function<void()> onDestroyed);

  /// Watches this window on the display from now on; 0 for none.
  void watch(WId window) { window_ = window; }

  bool nativeEventFilter(const QByteArray& eventType, void* message, qintptr* result) override;

 private:
  std::function<void()> onDestroyed_;
  WId window_ = 0;
};

}  // namespace quillmar
