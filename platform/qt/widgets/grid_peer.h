#pragma once

#include <vector>

#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/grid_view.h"

namespace quillmar {

class GridPeer final : public WidgetPeer {
 public:
  GridPeer(GridView& grid, QtWindowPeer& window, QWidget& parent);

  void subviewsChanged() override;
  void place(const QRect& frame) override;

 protected:
  void update() override {}
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;
  bool growsBeyondStatedWidth() const override { return true; }

 private:
  struct Row {
    /// Null if there is no label.
    WidgetPeer* label;
    WidgetPeer* view;
    QSize labelSize;
    int viewWidth;
    int maximumViewHeight;
    /// From the top of the row.
    int labelOffset;
    int viewOffset;
    /// Between the row and the one above.
    int gap;
    Extent height;
  };

  int firstColumnWidth() const;
  /// From the leading edge to the second column.
  int secondColumn() const;
  /// Of the rows that are not hidden, if the grid has that width.
  std::vector<Row> rows(int width) const;

  GridView& grid_;
};

}  // namespace quillmar
