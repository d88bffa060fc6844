// The hot keys of the session's display: the portal on Wayland, grabs on X11.

#pragma once

#include <memory>

#include <gio/gio.h>

#include "platform/environment.h"
#include "platform/hot_keys.h"

namespace quillmar {

/// Chooses by WAYLAND_DISPLAY and DISPLAY. If neither is set, every registration fails with
/// HotKeyStatus::noService. `environment` and `sessionBus` must outlive the result.
std::unique_ptr<HotKeys> makeDesktopHotKeys(const Environment& environment,
                                            GDBusConnection* sessionBus);

}  // namespace quillmar
