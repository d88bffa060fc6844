// Creates the toolkit's menus from menus of the model. Main thread.

#pragma once

#include <QPoint>
#include <functional>
#include <memory>

#include "platform/menu.h"
#include "platform/qt/menus/scrolling_menu.h"
#include "platform/task_queue.h"

namespace quillmar {

/// Handlers for chosen entries.
struct MenuChoice {
  TaskQueue& mainQueue;
  /// Called with every chosen entry, in a separate task of the main queue.
  std::function<void(const ActionEntry& entry)> choose;
};

/// Fills the toolkit's menu with the entries.
void fillMenu(ScrollingMenu& widget, const Menu& menu, const MenuChoice& choice);

/// Opens the menu below the point, or above it if there is not enough space below. Closes every
/// other menu of the program.
void openAt(QPoint point, QMenu& widget);

}  // namespace quillmar
