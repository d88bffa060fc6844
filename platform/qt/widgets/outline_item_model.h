// The rows of an outline for the toolkit's tree view. Values are read when they are drawn.

#pragma once

#include <QAbstractItemModel>

#include "platform/widgets/outline_view.h"

namespace quillmar {

class OutlineItemModel final : public QAbstractItemModel {
 public:
  OutlineItemModel(OutlineView& outline, QObject* parent)
      : QAbstractItemModel(parent), outline_(&outline) {}

  /// From now on there are no rows: the outline is about to be destroyed.
  void detach();
  /// The outline has other rows.
  void reset();
  void valuesChanged();

  /// Null for an invalid index.
  const OutlineNode* node(const QModelIndex& index) const;
  QModelIndex indexOf(const OutlineNode& node) const;
  /// Empty for an invalid index.
  OutlineRow value(const QModelIndex& index) const;

  QModelIndex index(int row, int column, const QModelIndex& parent = {}) const override;
  QModelIndex parent(const QModelIndex& child) const override;
  int rowCount(const QModelIndex& parent = {}) const override;
  int columnCount(const QModelIndex& /*parent*/ = {}) const override { return 1; }
  bool hasChildren(const QModelIndex& parent = {}) const override;
  /// For screen readers.
  QVariant data(const QModelIndex& index, int role = Qt::DisplayRole) const override;
  Qt::ItemFlags flags(const QModelIndex& index) const override;

 private:
  OutlineNode* parentNode(const QModelIndex& parent) const;

  OutlineView* outline_;
};

}  // namespace quillmar
