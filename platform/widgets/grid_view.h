// A form of two columns: labels, and the views that they describe.
//
// The first column is aligned to the trailing side, so that the labels are beside their views. The
// cells of a row are aligned to the top; there, the first lines of text are on one level.

#pragma once

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/widgets/label.h"
#include "platform/widgets/view.h"

namespace quillmar {

class GridView final : public View {
 public:
  struct Row {
    /// Null if the first cell is empty.
    std::unique_ptr<Label> label;
    std::unique_ptr<View> view;
    /// Additional space above the row; negative for less.
    double topPadding = 0;
  };

  void accept(ViewVisitor& visitor) override;
  std::vector<View*> subviews() const override;

  const std::vector<Row>& rows() const { return rows_; }

  /// Creates a view and appends it with its label; empty for no label. The view is named after the
  /// label for screen readers, without the colon at the end.
  template <class Kind, class... Arguments>
  Kind& addRow(const std::string& label, Arguments&&... arguments) {
    auto view = std::make_unique<Kind>(std::forward<Arguments>(arguments)...);
    Kind& added = *view;
    insert(label, std::move(view));
    return added;
  }

  /// Sets the padding above the row of that view.
  void setTopPadding(double padding, const View& view);

  double rowSpacing() const { return rowSpacing_; }
  void setRowSpacing(double spacing) { set(rowSpacing_, spacing); }

  double columnSpacing() const { return columnSpacing_; }
  void setColumnSpacing(double spacing) { set(columnSpacing_, spacing); }

  /// A minimum: a longer label makes the column wider.
  double firstColumnWidth() const { return firstColumnWidth_; }
  void setFirstColumnWidth(double width) { set(firstColumnWidth_, width); }

 private:
  void insert(const std::string& label, std::unique_ptr<View> view);

  std::vector<Row> rows_;
  double rowSpacing_ = 0;
  double columnSpacing_ = 0;
  double firstColumnWidth_ = 0;
};

}  // namespace quillmar
