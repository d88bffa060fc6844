// Menus of the model, and those of the toolkit that are there.

#pragma once

#include <QApplication>
#include <QMenu>
#include <string>
#include <utility>
#include <vector>

#include "platform/menu.h"

namespace quillmar {

inline ActionEntry commandEntry(std::string title, std::string id) {
  ActionEntry entry;
  entry.title = std::move(title);
  entry.id = std::move(id);
  return entry;
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
