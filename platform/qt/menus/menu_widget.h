// A menu as plain data, turned into a menu of the toolkit. Main thread.

#pragma once

#include <functional>
#include <memory>

#include "platform/menu.h"
#include "platform/qt/menus/scrolling_menu.h"
#include "platform/task_queue.h"

namespace quillmar {

/// What a choice does, in a turn of the main queue of its own.
struct MenuChoice {
  TaskQueue& mainQueue;
  std::function<void(const ActionEntry& entry)> choose;
};

/// Fills the toolkit's menu with the entries.
void fillMenu(ScrollingMenu& widget, const Menu& menu, const MenuChoice& choice);

/// Opens the menu where the pointer is; whatever menu is open closes, the icon's as well as one
/// that has popped up.
void openAtPointer(QMenu& widget);

}  // namespace quillmar
