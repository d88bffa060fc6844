#include "platform/linux/hot_keys/desktop_hot_keys.h"

#include <string>

#include "platform/linux/hot_keys/portal_hot_keys.h"
#include "platform/linux/hot_keys/x11_hot_keys.h"

namespace quillmar {

namespace {

class UnavailableHotKeys final : public HotKeys {
 public:
  Result<HotKeyReference, HotKeyStatus> registerHotKey(const HotKeyRequest& /*request*/) override {
    return HotKeyStatus::noService;
  }
  void unregisterHotKey(HotKeyReference /*reference*/) override {}
};

}  // namespace

std::unique_ptr<HotKeys> makeDesktopHotKeys(const Environment& environment) {
  const std::string wayland = environment.value("WAYLAND_DISPLAY").value_or("");
  const std::string display = environment.value("DISPLAY").value_or("");
  // Under Wayland, a grab on Xwayland works only while an X11 window has the keyboard.
  if (!wayland.empty()) return std::make_unique<PortalHotKeys>(environment);
  if (!display.empty()) return std::make_unique<X11HotKeys>(display);
  return std::make_unique<UnavailableHotKeys>();
}

}  // namespace quillmar
