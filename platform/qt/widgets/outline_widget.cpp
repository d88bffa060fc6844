#include "platform/qt/widgets/outline_widget.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QScrollBar>
#include <algorithm>

#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/outline_view.h"

namespace quillmar {

OutlineWidget::OutlineWidget(QWidget* parent)
    : RingedArea(parent), delegate_(new OutlineDelegate(*this)) {
  setItemDelegate(delegate_);
  setHeaderHidden(true);
  setIndentation(pixels(OutlineView::indentation));
  setUniformRowHeights(true);
  setExpandsOnDoubleClick(false);
  setEditTriggers(NoEditTriggers);
  setSelectionMode(SingleSelection);
  setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  setVerticalScrollMode(ScrollPerPixel);
  setTabKeyNavigation(false);
}

int OutlineWidget::rowHeight() const {
  return delegate_->sizeHint({}, {}).height();
}

void OutlineWidget::reveal(const QModelIndex& index) {
  scrollTo(index);
  // The toolkit leaves the last pixel of a row below the view.
  const int hidden = visualRect(index).bottom() - viewport()->rect().bottom();
  QScrollBar& bar = *verticalScrollBar();
  if (hidden > 0) bar.setValue(bar.value() + hidden);
}

int OutlineWidget::rowsPerPage() const {
  // One row of the last page stays in sight.
  return std::max(1, viewport()->height() / rowHeight() - 1);
}

std::optional<std::string> OutlineWidget::checkboxAt(const QPoint& position) const {
  const QModelIndex index = indexAt(position);
  if (!index.isValid()) return std::nullopt;
  return delegate_->checkboxAt(position, visualRect(index), index);
}

bool OutlineWidget::pressCheckbox(const QMouseEvent& event) {
  pressedIndex_ = QModelIndex();
  const auto checkbox = checkboxAt(event.position().toPoint());
  if (event.button() != Qt::LeftButton || !checkbox) return false;
  pressedIndex_ = indexAt(event.position().toPoint());
  pressedIdentifier_ = *checkbox;
  return true;
}

void OutlineWidget::keyPressEvent(QKeyEvent* event) {
  event->ignore();
}

void OutlineWidget::mousePressEvent(QMouseEvent* event) {
  if (!pressCheckbox(*event)) RingedArea::mousePressEvent(event);
}

void OutlineWidget::mouseDoubleClickEvent(QMouseEvent* event) {
  if (!pressCheckbox(*event)) RingedArea::mouseDoubleClickEvent(event);
}

void OutlineWidget::mouseMoveEvent(QMouseEvent* event) {
  // The toolkit would select the row that the pointer is dragged over.
  if (!pressedIndex_.isValid()) RingedArea::mouseMoveEvent(event);
}

void OutlineWidget::mouseReleaseEvent(QMouseEvent* event) {
  if (!pressedIndex_.isValid()) return RingedArea::mouseReleaseEvent(event);
  const QPoint position = event->position().toPoint();
  const QModelIndex pressed = pressedIndex_;
  pressedIndex_ = QModelIndex();
  if (indexAt(position) != pressed || checkboxAt(position) != pressedIdentifier_) return;
  const auto onCheckbox = onCheckbox_;
  onCheckbox(pressed, pressedIdentifier_);
}

}  // namespace quillmar
