#include "platform/linux/hot_keys/portal_hot_keys.h"

namespace quillmar {

PortalHotKeys::PortalHotKeys(const Environment&, GDBusConnection*) {}

Result<HotKeyReference, HotKeyStatus> PortalHotKeys::registerHotKey(const HotKeyRequest&) {
  return HotKeyStatus::noService;
}

void PortalHotKeys::unregisterHotKey(HotKeyReference) {}

}  // namespace quillmar
