// The hot keys of the session's display: the portal on Wayland, grabs on X11.

#pragma once

#include <memory>

#include "platform/environment.h"
#include "platform/hot_keys.h"

namespace quillmar {

/// Chooses by WAYLAND_DISPLAY and DISPLAY. If neither is set, every registration fails with
/// HotKeyStatus::noService.
std::unique_ptr<HotKeys> makeDesktopHotKeys(const Environment& environment);

}  // namespace quillmar
