// Builds the status menu from the document. A pure function of its arguments.

#pragma once

#include "config/quillmar_config.h"
#include "platform/image.h"
#include "platform/menu.h"

namespace quillmar {

/// The complete menu: visible folders in display order, then the fixed entries. Entry ids are
/// encoded by status_menu_action.h. `images` provides the symbols; `updatesConfigured` adds the
/// entry "Check for Updates...".
Menu buildStatusMenu(const QuillmarConfig& config, Images& images, bool updatesConfigured);

}  // namespace quillmar
