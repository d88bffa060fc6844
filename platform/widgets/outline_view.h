// A list of rows that may contain other rows.
//
// The outline keeps no content. It asks its data source for rows, which are strings, and for the
// value of a row each time it is drawn, so that long lists open fast. Rows have no views.

#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/control_state.h"
#include "platform/widgets/outline_row.h"
#include "platform/widgets/outline_tree.h"
#include "platform/widgets/type_ahead.h"
#include "platform/widgets/view.h"

namespace quillmar {

struct OutlineChild {
  std::string row;
  /// True if the row can be expanded, even if there are no rows inside.
  bool isExpandable = false;
};

class OutlineDataSource {
 public:
  virtual ~OutlineDataSource() = default;

  /// The rows inside of a row, from top to bottom; null asks for those of the top level.
  virtual std::vector<OutlineChild> children(const std::string* row) = 0;
  /// What a row shows; empty for a row that no longer exists.
  virtual OutlineRow value(const std::string& row) = 0;
};

/// Implemented by the peers of outlines that have to hear more than ViewPeer::viewChanged().
class OutlineObserver {
 public:
  virtual ~OutlineObserver() = default;

  /// There are other rows, and other nodes, or the same ones with other values.
  virtual void rowsChanged() = 0;
  virtual void valuesChanged() = 0;
  virtual void expansionChanged(const OutlineNode& node) = 0;
  /// Another row is selected, or none. The peer scrolls to it.
  virtual void selectionChanged() = 0;
  /// By which Page Up and Page Down move.
  virtual std::size_t rowsPerPage() const = 0;
};

class OutlineView final : public View {
 public:
  // Sizes of the rows, in device-independent pixels. Rows are higher if the font needs it.
  static constexpr double rowHeight = 24;
  static constexpr double indentation = 20;
  static constexpr double cellSpacing = 6;
  static constexpr double trailingMargin = 4;

  /// The data source is not owned and must outlive the outline.
  explicit OutlineView(OutlineDataSource& dataSource);

  void accept(ViewVisitor& visitor) override;

  // Rows. An index counts the visible rows: those that are not inside of a collapsed one.

  std::size_t rowCount() const { return tree_->visible().size(); }
  const std::string& row(std::size_t index) const { return tree_->visible()[index]->row; }
  /// The first visible row with that string.
  std::optional<std::size_t> indexOf(const std::string& row) const;
  int level(std::size_t index) const { return tree_->visible()[index]->level(); }
  bool isExpandable(std::size_t index) const { return tree_->visible()[index]->expandable; }
  bool isExpanded(std::size_t index) const { return tree_->visible()[index]->expanded; }
  /// Asks the data source.
  OutlineRow value(std::size_t index) const { return dataSource_.value(row(index)); }

  // State to show.

  /// Asks the data source for the rows again. Rows that still exist stay expanded and selected, and
  /// the scroll position is kept.
  void reload();

  void setExpanded(const std::string& row, bool expanded);
  /// Expands all rows of the top level.
  void expandAll();

  std::optional<std::size_t> selectedIndex() const;
  /// Null if no row is selected.
  const std::string* selectedRow() const { return selected_ ? &selected_->row : nullptr; }
  /// Scrolls to the row. Ignores an index without a row.
  void setSelectedIndex(std::optional<std::size_t> index);

  // Events from the user.

  bool acceptsFirstResponder() const override { return takesInput(); }

  /// The arrow keys, Home, End, Page Up and Page Down select a row; Left and Right also collapse
  /// and expand. Space toggles the checkbox of the selected row. Typing selects the next row that
  /// begins with the text.
  bool key(const KeyPress& press) override;

  void select(std::size_t index);
  void expand(std::size_t index) { userSetsExpanded(index, true); }
  /// If the selected row is inside, the collapsed row becomes the selected one.
  void collapse(std::size_t index) { userSetsExpanded(index, false); }
  /// Selects the row, too.
  void doubleClick(std::size_t index);
  /// Toggles the checkbox with that identifier in the row. The data source decides what it shows
  /// then.
  void toggle(std::size_t index, const std::string& identifier);

  // Callbacks.

  /// Called after the user double-clicked a row.
  void setOnDoubleClick(std::function<void()> onDoubleClick) {
    onDoubleClick_ = std::move(onDoubleClick);
  }
  /// Called with the state that the user wants.
  void setOnToggle(
      std::function<void(const std::string& identifier, ControlState state)> onToggle) {
    onToggle_ = std::move(onToggle);
  }

  // For window systems.

  const OutlineTree& tree() const { return *tree_; }
  std::optional<std::size_t> indexOf(const OutlineNode& node) const;
  OutlineRow value(const OutlineNode& node) const { return dataSource_.value(node.row); }

 private:
  OutlineObserver* observer() const { return dynamic_cast<OutlineObserver*>(peer()); }
  void setExpanded(OutlineNode& node, bool expanded);
  void userSetsExpanded(std::size_t index, bool expanded);
  /// The row that the key selects.
  std::optional<std::size_t> indexFor(const KeyPress& press) const;
  bool leftOrRight(const KeyPress& press);
  bool toggleSelected();
  bool typeAhead(const KeyPress& press);

  OutlineDataSource& dataSource_;
  std::unique_ptr<OutlineTree> tree_;
  OutlineNode* selected_ = nullptr;
  TypeAhead typeAhead_;
  std::function<void()> onDoubleClick_;
  std::function<void(const std::string&, ControlState)> onToggle_;
};

}  // namespace quillmar
