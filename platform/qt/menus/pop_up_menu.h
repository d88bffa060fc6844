// The menu at the pointer. Main thread.

#pragma once

#include "platform/application.h"
#include "platform/menu.h"
#include "platform/qt/menus/menu_widget.h"

namespace quillmar {

/// Opens the menu and returns; one that is open closes. Where the display lets no program place its
/// windows the menu lies in a small window of its own, which
/// `activation` gives the focus.
void popUpMenuWidget(const Menu& menu, const Activation& activation, const MenuChoice& choice);

}  // namespace quillmar
