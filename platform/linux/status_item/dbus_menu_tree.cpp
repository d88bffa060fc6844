#include "platform/linux/status_item/dbus_menu_tree.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <utility>

namespace quillmar {

namespace {

std::size_t countEntries(const Menu& menu) {
  std::size_t count = menu.entries.size();
  for (const MenuEntry& entry : menu.entries) {
    const auto* folder = std::get_if<SubmenuEntry>(&entry);
    if (folder) count += countEntries(folder->submenu);
  }
  return std::min(count, DbusMenuTree::maximumEntries);
}

}  // namespace

DbusMenuTree::DbusMenuTree(Id firstId) : nextId_(firstId) {}

bool DbusMenuTree::replace(Menu menu) {
  if (menu == current_.menu) {
    current_.menu = std::move(menu);
    current_.makeNodes();
    return false;
  }
  const std::size_t count = countEntries(menu);
  const auto left = static_cast<std::size_t>(std::numeric_limits<Id>::max() - nextId_);
  if (count > left) nextId_ = 1;

  Generation generation;
  generation.menu = std::move(menu);
  generation.firstId = nextId_;
  generation.makeNodes();

  nextId_ += static_cast<Id>(count);
  previous_ = std::exchange(current_, std::move(generation));
  ++revision_;
  return true;
}

std::optional<DbusMenuTree::Node> DbusMenuTree::find(Id id) const {
  if (id == rootId) return current_.root;
  for (const Generation* generation : {&current_, &previous_}) {
    if (const Node* node = generation->find(id)) return *node;
  }
  return std::nullopt;
}

void DbusMenuTree::Generation::makeNodes() {
  nodes.clear();
  nodes.reserve(countEntries(menu));
  addNodes(*this, menu, root);
}

const DbusMenuTree::Node* DbusMenuTree::Generation::find(Id id) const {
  if (id < firstId || static_cast<std::size_t>(id - firstId) >= nodes.size()) return nullptr;
  return &nodes[static_cast<std::size_t>(id - firstId)];
}

// `parent` may be one of generation.nodes, which are reserved and do not move.
void DbusMenuTree::addNodes(Generation& generation, const Menu& menu, Node& parent) {
  const std::size_t first = generation.nodes.size();
  const std::size_t count = std::min(menu.entries.size(), maximumEntries - first);
  parent.firstChild = generation.firstId + static_cast<Id>(first);
  parent.childCount = static_cast<Id>(count);
  // Entries between these two groups are dropped.
  const std::size_t firstEntries = count - std::min(count, keptLastEntries);
  for (std::size_t i = 0; i < count; ++i) {
    const std::size_t index = i < firstEntries ? i : menu.entries.size() - count + i;
    generation.nodes.push_back(
        {.id = parent.firstChild + static_cast<Id>(i), .entry = &menu.entries[index]});
  }
  for (std::size_t i = first; i < first + count; ++i) {
    if (const auto* folder = std::get_if<SubmenuEntry>(generation.nodes[i].entry)) {
      addNodes(generation, folder->submenu, generation.nodes[i]);
    }
  }
}

}  // namespace quillmar
