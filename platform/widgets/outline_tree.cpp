#include "platform/widgets/outline_tree.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>

#include "platform/widgets/outline_view.h"

namespace quillmar {

namespace {

using Rows = std::unordered_set<std::string_view>;

void collectExpanded(const OutlineNode& node, Rows& rows) {
  for (const auto& child : node.children) {
    if (child->expanded) rows.insert(child->row);
    collectExpanded(*child, rows);
  }
}

void expand(const OutlineTree& tree, OutlineNode& node, const Rows& rows) {
  tree.load(node);
  for (const auto& child : node.children) {
    if (!child->expandable || !rows.contains(child->row)) continue;
    child->expanded = true;
    expand(tree, *child, rows);
  }
}

}  // namespace

OutlineTree::OutlineTree(OutlineDataSource& dataSource, const OutlineTree* expandedAs)
    : dataSource_(dataSource) {
  root_->expandable = true;
  root_->expanded = true;
  Rows expanded;
  if (expandedAs != nullptr) collectExpanded(*expandedAs->root_, expanded);
  expand(*this, *root_, expanded);
}

void OutlineTree::load(OutlineNode& node) const {
  if (node.loaded || !node.expandable) return;
  node.loaded = true;
  const std::string* const parent = &node == root_.get() ? nullptr : &node.row;
  const std::size_t count = dataSource_.numberOfChildren(parent);
  node.children.reserve(count);
  for (std::size_t i = 0; i < count; ++i) {
    auto child = std::make_unique<OutlineNode>();
    child->row = dataSource_.child(i, parent);
    child->parent = &node;
    child->index = i;
    child->expandable = dataSource_.isExpandable(child->row);
    node.children.push_back(std::move(child));
  }
}

void OutlineTree::setExpanded(OutlineNode& node, bool expanded) {
  node.expanded = expanded;
  if (expanded) load(node);
  isVisibleKnown_ = false;
}

const std::vector<OutlineNode*>& OutlineTree::visible() const {
  if (!isVisibleKnown_) {
    visible_.clear();
    collectVisible(*root_);
    isVisibleKnown_ = true;
  }
  return visible_;
}

void OutlineTree::collectVisible(const OutlineNode& node) const {
  for (const auto& child : node.children) {
    visible_.push_back(child.get());
    if (child->expanded) collectVisible(*child);
  }
}

bool OutlineTree::looksLike(const OutlineTree& other) const {
  return std::ranges::equal(
      visible(), other.visible(), [](const OutlineNode* one, const OutlineNode* another) {
        return one->row == another->row && one->expandable == another->expandable &&
               one->expanded == another->expanded && one->level() == another->level();
      });
}

}  // namespace quillmar
