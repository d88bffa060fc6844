// Draws the cells of an outline's rows.

#pragma once

#include <QStyledItemDelegate>
#include <optional>
#include <string>
#include <vector>

#include "platform/widgets/outline_row.h"

namespace quillmar {

class OutlineDelegate final : public QStyledItemDelegate {
 public:
  explicit OutlineDelegate(QWidget& view) : QStyledItemDelegate(&view), view_(view) {}

  /// The identifier of the checkbox at that position of a row; absent if there is none.
  std::optional<std::string> checkboxAt(const QPoint& position, const QRect& rowRect,
                                        const QModelIndex& index) const;

  void paint(QPainter* painter, const QStyleOptionViewItem& option,
             const QModelIndex& index) const override;
  /// Reads no values, because all rows have the same height.
  QSize sizeHint(const QStyleOptionViewItem& option, const QModelIndex& index) const override;
  /// Shows the whole texts of a row as a tool tip, if they are cut off.
  bool helpEvent(QHelpEvent* event, QAbstractItemView* view, const QStyleOptionViewItem& option,
                 const QModelIndex& index) override;

 private:
  /// The places of the cells, centred vertically.
  std::vector<QRect> places(const OutlineRow& row, const QRect& rowRect) const;
  QSize naturalSize(const OutlineCell& cell) const;
  void paintCell(QPainter& painter, const OutlineCell& cell, const QRect& place,
                 const QStyleOptionViewItem& option) const;
  void paintText(QPainter& painter, const TextCell& text, const QRect& place,
                 const QStyleOptionViewItem& option) const;

  QWidget& view_;
};

}  // namespace quillmar
