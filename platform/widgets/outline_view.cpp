#include "platform/widgets/outline_view.h"

#include <algorithm>

#include "platform/widgets/checkbox.h"
#include "platform/widgets/view_visitor.h"

namespace quillmar {

namespace {

/// Without a screen.
constexpr std::size_t usualRowsPerPage = 10;

bool isInside(const OutlineNode* node, const OutlineNode& ancestor) {
  while (node != nullptr && node != &ancestor) node = node->parent;
  return node != nullptr;
}

}  // namespace

OutlineView::OutlineView(OutlineDataSource& dataSource)
    : dataSource_(dataSource), tree_(std::make_unique<OutlineTree>(dataSource)) {}

void OutlineView::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

std::optional<std::size_t> OutlineView::indexOf(const std::string& row) const {
  const auto& rows = tree_->visible();
  const auto at = std::ranges::find(rows, row, &OutlineNode::row);
  if (at == rows.end()) return std::nullopt;
  return static_cast<std::size_t>(at - rows.begin());
}

std::optional<std::size_t> OutlineView::indexOf(const OutlineNode& node) const {
  const auto& rows = tree_->visible();
  const auto at = std::ranges::find(rows, &node);
  if (at == rows.end()) return std::nullopt;
  return static_cast<std::size_t>(at - rows.begin());
}

void OutlineView::reload() {
  auto tree = std::make_unique<OutlineTree>(dataSource_, tree_.get());
  // Hidden rows may be other ones now.
  if (!tree_->hasHiddenRows() && tree->looksLike(*tree_)) {
    if (observer() != nullptr) observer()->valuesChanged();
    return;
  }
  // The observer may still refer to the old nodes.
  const auto old = std::exchange(tree_, std::move(tree));
  if (selected_ != nullptr) {
    const auto index = indexOf(selected_->row);
    selected_ = index ? tree_->visible()[*index] : nullptr;
  }
  if (observer() != nullptr) observer()->rowsChanged();
}

void OutlineView::setExpanded(const std::string& row, bool expanded) {
  if (const auto index = indexOf(row)) setExpanded(*tree_->visible()[*index], expanded);
}

void OutlineView::expandAll() {
  for (const auto& node : tree_->root().children) setExpanded(*node, true);
}

void OutlineView::setExpanded(OutlineNode& node, bool expanded) {
  if (!node.expandable || node.expanded == expanded) return;
  tree_->setExpanded(node, expanded);
  const bool hidesSelection = !expanded && selected_ != &node && isInside(selected_, node);
  if (hidesSelection) selected_ = &node;
  if (observer() == nullptr) return;
  observer()->expansionChanged(node);
  if (hidesSelection) observer()->selectionChanged();
}

std::optional<std::size_t> OutlineView::selectedIndex() const {
  return selected_ == nullptr ? std::nullopt : indexOf(*selected_);
}

void OutlineView::setSelectedIndex(std::optional<std::size_t> index) {
  if (index && *index >= rowCount()) return;
  selected_ = index ? tree_->visible()[*index] : nullptr;
  if (observer() != nullptr) observer()->selectionChanged();
}

void OutlineView::select(std::size_t index) {
  if (takesInput()) {
    setSelectedIndex(index);
  } else if (observer() != nullptr) {
    // The real outline may already show the rejected selection.
    observer()->selectionChanged();
  }
}

void OutlineView::userSetsExpanded(std::size_t index, bool expanded) {
  if (index >= rowCount()) return;
  OutlineNode& node = *tree_->visible()[index];
  if (takesInput()) {
    setExpanded(node, expanded);
  } else if (observer() != nullptr) {
    observer()->expansionChanged(node);
  }
}

void OutlineView::doubleClick(std::size_t index) {
  if (!takesInput() || index >= rowCount()) return;
  select(index);
  // A copy, because the handler may destroy this outline.
  const auto onDoubleClick = onDoubleClick_;
  if (onDoubleClick) onDoubleClick();
}

void OutlineView::toggle(std::size_t index, const std::string& identifier) {
  if (!takesInput() || index >= rowCount()) return;
  for (const OutlineCell& cell : value(index).cells) {
    const auto* const checkbox = std::get_if<CheckboxCell>(&cell);
    if (checkbox == nullptr || checkbox->identifier != identifier) continue;
    // Copies, because the handler may destroy this outline.
    const auto onToggle = onToggle_;
    const CheckboxCell pressed = *checkbox;
    if (onToggle) onToggle(pressed.identifier, toggled(pressed.state));
    return;
  }
}

bool OutlineView::key(const KeyPress& press) {
  if (!takesInput() || rowCount() == 0) return false;
  if (const auto index = indexFor(press)) {
    select(*index);
    return true;
  }
  if (leftOrRight(press) || typeAhead(press)) return true;
  return press.is(keys::space) && toggleSelected();
}

std::optional<std::size_t> OutlineView::indexFor(const KeyPress& press) const {
  const std::size_t last = rowCount() - 1;
  const auto selected = selectedIndex();
  const std::size_t page = observer() == nullptr ? usualRowsPerPage : observer()->rowsPerPage();
  if (press.is(keys::home)) return 0;
  if (press.is(keys::end)) return last;
  const auto down = [&](std::size_t step) {
    return selected ? std::min(last, *selected + step) : 0;
  };
  const auto up = [&](std::size_t step) {
    return selected.value_or(last + step) - std::min(step, selected.value_or(last + step));
  };
  if (press.is(keys::down)) return down(1);
  if (press.is(keys::pageDown)) return down(page);
  if (press.is(keys::up)) return up(1);
  if (press.is(keys::pageUp)) return up(page);
  return std::nullopt;
}

bool OutlineView::leftOrRight(const KeyPress& press) {
  const bool isRight = press.is(keys::right);
  if (!isRight && !press.is(keys::left)) return false;
  const auto index = selectedIndex();
  if (!index) return true;
  OutlineNode& node = *selected_;
  if (node.expandable && node.expanded != isRight) {
    setExpanded(node, isRight);
  } else if (isRight && node.expandable && !node.children.empty()) {
    select(*index + 1);
  } else if (!isRight && node.parent != &tree_->root()) {
    select(*indexOf(*node.parent));
  }
  return true;
}

bool OutlineView::toggleSelected() {
  const auto index = selectedIndex();
  if (!index) return false;
  const OutlineRow shown = value(*index);
  const CheckboxCell* const checkbox = shown.checkbox();
  if (checkbox == nullptr) return false;
  toggle(*index, checkbox->identifier);
  return true;
}

bool OutlineView::typeAhead(const KeyPress& press) {
  const auto now = TypeAhead::Clock::now();
  if (!typeAhead_.isSearched(press, now)) return false;
  const auto found = typeAhead_.find(
      press.character, rowCount(), selectedIndex(),
      [this](std::size_t index) { return value(index).title(); }, now);
  if (found) select(*found);
  return true;
}

}  // namespace quillmar
