// The rows of an outline, as a tree. Children are asked for when their parent is expanded.

#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

namespace quillmar {

class OutlineDataSource;

struct OutlineNode {
  std::string row;
  /// The root for rows of the top level; null for the root.
  OutlineNode* parent = nullptr;
  /// Among the children of the parent.
  std::size_t index = 0;
  bool expandable = false;
  bool expanded = false;
  /// True if `children` has been filled.
  bool loaded = false;
  std::vector<std::unique_ptr<OutlineNode>> children;

  /// 0 for the top level.
  int level() const { return parent == nullptr ? -1 : parent->level() + 1; }
};

class OutlineTree {
 public:
  /// The data source is not owned. Asks for the rows of the top level, and for those in rows that
  /// are expanded in `expandedAs`.
  explicit OutlineTree(OutlineDataSource& dataSource, const OutlineTree* expandedAs = nullptr);

  OutlineNode& root() const { return *root_; }

  /// Fills `children` if that has not been done.
  void load(OutlineNode& node) const;
  void setExpanded(OutlineNode& node, bool expanded);

  /// The rows that are not inside of a collapsed one, from top to bottom.
  const std::vector<OutlineNode*>& visible() const;

  /// True if a collapsed row has children that were asked for while it was expanded.
  bool hasHiddenRows() const;

  /// True if both trees have the same visible rows with the same expansion.
  bool looksLike(const OutlineTree& other) const;

 private:
  void collectVisible(const OutlineNode& node) const;

  OutlineDataSource& dataSource_;
  std::unique_ptr<OutlineNode> root_ = std::make_unique<OutlineNode>();
  mutable std::vector<OutlineNode*> visible_;
  mutable bool isVisibleKnown_ = false;
};

}  // namespace quillmar
