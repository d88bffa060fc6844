#include "platform/qt/widgets/grid_peer.h"

#include <QStyle>
#include <algorithm>
#include <cmath>

#include "platform/qt/widgets/make_widgets.h"
#include "platform/qt/windows/qt_window_peer.h"

namespace quillmar {

GridPeer::GridPeer(GridView& grid, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(grid, window, new QWidget(&parent)), grid_(grid) {}

void GridPeer::subviewsChanged() {
  const QtWindowPeer::ProgramFocusChange programActs(window());
  for (View* const subview : grid_.subviews()) {
    if (subview->peer() == nullptr) makeWidgets(*subview, window(), widget());
  }
  window().contentChanged();
}

int GridPeer::firstColumnWidth() const {
  int width = pixels(grid_.firstColumnWidth());
  for (const GridView::Row& row : grid_.rows()) {
    if (!row.label || row.view->hidden() || row.label->peer() == nullptr) continue;
    width = std::max(width, widgetPeer(*row.label).horizontal().unclipped);
  }
  return width;
}

int GridPeer::secondColumn() const {
  return firstColumnWidth() + pixels(grid_.columnSpacing());
}

std::vector<GridPeer::Row> GridPeer::rows(int width) const {
  std::vector<Row> rows;
  const int available = std::max(0, width - secondColumn());
  for (const GridView::Row& row : grid_.rows()) {
    if (row.view->hidden() || row.view->peer() == nullptr) continue;
    Row placed{};
    placed.view = &widgetPeer(*row.view);
    const Extent horizontal = placed.view->horizontal();
    placed.viewWidth = std::min({available, std::max(horizontal.preferred, horizontal.maximum),
                                 placed.view->maximumWidth()});
    placed.height = placed.view->vertical(placed.viewWidth);
    placed.maximumViewHeight = placed.height.maximum;
    if (row.label) {
      placed.label = &widgetPeer(*row.label);
      const int labelWidth = std::min(firstColumnWidth(), placed.label->horizontal().maximum);
      placed.labelSize = QSize(labelWidth, placed.label->vertical(labelWidth).preferred);
      const int difference = placed.view->firstLineMiddle(placed.viewWidth) -
                             placed.label->firstLineMiddle(labelWidth);
      placed.labelOffset = std::max(0, difference);
      placed.viewOffset = std::max(0, -difference);
    }
    const int labelBottom = placed.labelOffset + placed.labelSize.height();
    for (int Extent::*length :
         {&Extent::minimum, &Extent::unclipped, &Extent::preferred, &Extent::maximum}) {
      placed.height.*length = std::max(labelBottom, placed.viewOffset + placed.height.*length);
    }
    // Spare height stays below the last row.
    placed.height.maximum = placed.height.preferred;
    placed.gap =
        static_cast<int>(std::lround((rows.empty() ? 0 : grid_.rowSpacing()) + row.topPadding));
    rows.push_back(placed);
  }
  return rows;
}

Extent GridPeer::contentHorizontal() const {
  std::vector<Extent> views;
  for (const GridView::Row& row : grid_.rows()) {
    if (!row.view->hidden() && row.view->peer() != nullptr) {
      views.push_back(widgetPeer(*row.view).horizontal());
    }
  }
  return sumOf({Extent::fixed(secondColumn()), widestOf(views)});
}

Extent GridPeer::contentVertical(int width) const {
  std::vector<Extent> extents;
  for (const Row& row : rows(width)) {
    extents.push_back(Extent::fixed(row.gap));
    extents.push_back(row.height);
  }
  return sumOf(extents);
}

void GridPeer::place(const QRect& frame) {
  WidgetPeer::place(frame);
  for (const GridView::Row& row : grid_.rows()) {
    if (row.label && row.label->peer() != nullptr) {
      widgetPeer(*row.label).widget().setVisible(!row.view->hidden());
    }
  }
  const std::vector<Row> placed = rows(frame.width());
  std::vector<Extent> extents;
  int gaps = 0;
  for (const Row& row : placed) {
    extents.push_back(row.height);
    gaps += row.gap;
  }
  const std::vector<int> heights = distribute(extents, frame.height() - gaps);
  const auto visual = [&](int left, int top, const QSize& size) {
    return QStyle::visualRect(widget().layoutDirection(), widget().rect(),
                              QRect(QPoint(left, top), size));
  };
  const int labelsEnd = firstColumnWidth();
  int top = 0;
  for (std::size_t i = 0; i < placed.size(); ++i) {
    const Row& row = placed[i];
    top += row.gap;
    if (row.label != nullptr) {
      row.label->place(
          visual(labelsEnd - row.labelSize.width(), top + row.labelOffset, row.labelSize));
    }
    const int height = std::min(heights[i] - row.viewOffset, row.maximumViewHeight);
    row.view->place(
        visual(secondColumn(), top + row.viewOffset, QSize(row.viewWidth, std::max(0, height))));
    top += heights[i];
  }
}

}  // namespace quillmar
