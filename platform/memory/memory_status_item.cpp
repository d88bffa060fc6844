#include "platform/memory/memory_status_item.h"

#include <span>
#include <utility>
#include <variant>

namespace quillmar {

namespace {

/// Null if no enabled entry has this path.
const ActionEntry* findAction(const Menu& menu, std::span<const std::string> path) {
  if (path.empty()) return nullptr;
  for (const MenuEntry& entry : menu.entries) {
    if (path.size() == 1) {
      const auto* action = std::get_if<ActionEntry>(&entry);
      if (action && action->enabled && action->title == path.front()) return action;
    } else {
      const auto* folder = std::get_if<SubmenuEntry>(&entry);
      if (!folder || !folder->enabled || folder->title != path.front()) continue;
      if (const ActionEntry* action = findAction(folder->submenu, path.subspan(1))) return action;
    }
  }
  return nullptr;
}

}  // namespace

MemoryStatusItem::MemoryStatusItem(TaskQueue& mainQueue)
    : mainQueue_(mainQueue), self_(std::make_shared<MemoryStatusItem*>(this)) {}

void MemoryStatusItem::setMenu(Menu menu) {
  previous_ = std::exchange(current_, std::move(menu));
  ++generation_;
}

bool MemoryStatusItem::click(OpenMenu opened, const Path& path, Activation activation) {
  const std::size_t age = generation_ - opened.generation;
  if (age > 1) return false;
  const ActionEntry* entry = findAction(age == 0 ? current_ : previous_, path);
  if (!entry) return false;
  mainQueue_.async(
      [weakSelf = std::weak_ptr(self_), entry = *entry, activation = std::move(activation)] {
        if (const auto self = weakSelf.lock()) (*self)->sendAction(entry, activation);
      });
  return true;
}

}  // namespace quillmar
