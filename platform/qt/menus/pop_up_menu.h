// Pop-up menus, which need no panel. Main thread.

#pragma once

#include <optional>

#include "platform/application.h"
#include "platform/menu.h"
#include "platform/qt/menus/menu_widget.h"
#include "platform/window_system.h"

namespace quillmar {

/// Opens the menu as WindowSystem::popUpMenu describes. On displays where programs cannot position
/// windows (Wayland), the menu opens in a small window, which gets the focus with `activation`.
void popUpMenuWidget(const Menu& menu, std::optional<ScreenPoint> position,
                     const Activation& activation, const MenuChoice& choice);

}  // namespace quillmar
