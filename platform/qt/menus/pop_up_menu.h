// The menu that pops up without a panel's help. Main thread.

#pragma once

#include <optional>

#include "platform/application.h"
#include "platform/menu.h"
#include "platform/qt/menus/menu_widget.h"
#include "platform/window_system.h"

namespace quillmar {

/// Opens the menu as WindowSystem::popUpMenu describes. On displays where programs cannot position
/// windows (Wayland), the menu opens in a small window of its own, which `activation` gives the
/// focus.
void popUpMenuWidget(const Menu& menu, std::optional<ScreenPoint> position,
                     const Activation& activation, const MenuChoice& choice);

}  // namespace quillmar
