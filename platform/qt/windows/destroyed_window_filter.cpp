#include "platform/qt/windows/destroyed_window_filter.h"

#include <QCoreApplication>
#include <utility>

#include "platform/qt/windows/x11_requests.h"

namespace quillmar {

DestroyedWindowFilter::DestroyedWindowFilter(std::function<void()> onDestroyed)
    : onDestroyed_(std::move(onDestroyed)) {
  QCoreApplication::instance()->installNativeEventFilter(this);
}

bool DestroyedWindowFilter::nativeEventFilter(const QByteArray& eventType, void* message,
                                              qintptr* /*result*/) {
  if (window_ == 0 || eventType != "xcb_generic_event_t") return false;
  const auto& event = *static_cast<const xcb_generic_event_t*>(message);
  if (x11EventType(event) != XCB_DESTROY_NOTIFY) return false;
  const auto& destroyed = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
  if (destroyed.window == static_cast<xcb_window_t>(window_)) onDestroyed_();
  return false;
}

}  // namespace quillmar
