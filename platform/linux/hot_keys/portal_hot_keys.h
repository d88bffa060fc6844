// Hot keys through the desktop portal org.freedesktop.portal.GlobalShortcuts. Main thread.

#pragma once

#include <gio/gio.h>

#include "platform/environment.h"
#include "platform/hot_keys.h"

namespace quillmar {

class PortalHotKeys final : public HotKeys {
 public:
  /// Both must outlive this object.
  PortalHotKeys(const Environment& environment, GDBusConnection* sessionBus);

  Result<HotKeyReference, HotKeyStatus> registerHotKey(const HotKeyRequest& request) override;
  void unregisterHotKey(HotKeyReference reference) override;
};

}  // namespace quillmar
