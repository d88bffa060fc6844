// Hot keys through passive grabs of keys on an X server. Main thread.

#pragma once

#include <string>

#include "platform/hot_keys.h"

namespace quillmar {

class X11HotKeys final : public HotKeys {
 public:
  explicit X11HotKeys(std::string display);

  Result<HotKeyReference, HotKeyStatus> registerHotKey(const HotKeyRequest& request) override;
  void unregisterHotKey(HotKeyReference reference) override;

 private:
  std::string display_;
};

}  // namespace quillmar
