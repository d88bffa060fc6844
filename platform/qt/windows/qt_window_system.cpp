#include "platform/qt/windows/qt_window_system.h"

#include "platform/qt/windows/qt_window_peer.h"
#include "platform/status_item.h"

namespace quillmar {

Result<std::unique_ptr<WindowPeer>> QtWindowSystem::makeWindowPeer(Window& window) {
  return std::unique_ptr<WindowPeer>(std::make_unique<QtWindowPeer>(window));
}

Result<void> QtWindowSystem::popUpMenu(Menu /*menu*/, const Activation& /*activation*/,
                                       std::function<void(const ActionEntry& entry)> /*choose*/) {
  return Error{"A menu at the pointer is not available yet."};
}

Result<std::unique_ptr<StatusItem>> QtWindowSystem::makeEmbeddedStatusItem() {
  return Error{"An icon in a tray of the older kind is not available yet."};
}

}  // namespace quillmar
