#include "platform/widgets/outline_tree.h"

#include <algorithm>
#include <string_view>
#include <unordered_set>
#include <utility>

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
  std::vector<OutlineChild> children = dataSource_.children(parent);
  node.children.reserve(children.size());
  for (OutlineChild& child : children) {
    auto added = std::make_unique<OutlineNode>();
    added->row = std::move(child.row);
    added->parent = &node;
    added->index = node.children.size();
    added->expandable = child.isExpandable;
    node.children.push_back(std::move(added));
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

bool OutlineTree::hasHiddenRows() const {
  return std::ranges::any_of(visible(), [](const OutlineNode* node) {
    return !node->expanded && !node->children.empty();
  });
}

bool OutlineTree::looksLike(const OutlineTree& other) const {
  return std::ranges::equal(
      visible(), other.visible(), [](const OutlineNode* one, const OutlineNode* another) {
        return one->row == another->row && one->expandable == another->expandable &&
               one->expanded == another->expanded && one->level() == another->level();
      });
}

}  // namespace quillmar
