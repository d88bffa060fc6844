// From the document to the status menu: a pure function of its arguments.

#pragma once

#include "config/quillmar_config.h"
#include "platform/image.h"
#include "platform/menu.h"

namespace quillmar {

/// The whole menu: visible folders in display order, then the fixed entries. The ids of its entries
/// are those of status_menu_action.h. `images` answers which symbols exist; `updatesConfigured`
/// adds the entry that checks for updates.
Menu buildStatusMenu(const QuillmarConfig& config, Images& images, bool updatesConfigured);

}  // namespace quillmar
