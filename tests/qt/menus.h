// Menus of the model, and those of the toolkit that are there.

#pragma once

#include <QApplication>
#include <QMenu>
#include <string>
#include <utility>
#include <vector>

#include "platform/menu.h"

namespace quillmar {

/// An entry that runs the command of that id.
inline ActionEntry commandEntry(std::string title, std::string id) {
  return {.title = std::move(title),
          .action = MenuAction::runCommand,
          .representedObject = std::move(id),
          .image = {},
          .keyEquivalent = {}};
}

/// All that are no submenus, on the screen or not.
inline std::vector<QMenu*> allMenus() {
  std::vector<QMenu*> found;
  for (QWidget* const widget : QApplication::topLevelWidgets()) {
    auto* const menu = dynamic_cast<QMenu*>(widget);
    if (menu != nullptr && menu->parent() == nullptr) found.push_back(menu);
  }
  return found;
}

}  // namespace quillmar
