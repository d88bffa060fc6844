#include "platform/linux/hot_keys/x11_hot_keys.h"

#include <utility>

namespace quillmar {

X11HotKeys::X11HotKeys(std::string display) : display_(std::move(display)) {}

Result<HotKeyReference, HotKeyStatus> X11HotKeys::registerHotKey(const HotKeyRequest&) {
  return HotKeyStatus::noService;
}

void X11HotKeys::unregisterHotKey(HotKeyReference) {}

}  // namespace quillmar
