#include "platform/qt/widgets/outline_item_model.h"

#include "platform/qt/widgets/check_state.h"

namespace quillmar {

void OutlineItemModel::detach() {
  beginResetModel();
  outline_ = nullptr;
  endResetModel();
}

void OutlineItemModel::reset() {
  beginResetModel();
  endResetModel();
}

void OutlineItemModel::valuesChanged() {
  const int count = rowCount();
  if (count > 0) Q_EMIT dataChanged(index(0, 0), index(count - 1, 0));
}

const OutlineNode* OutlineItemModel::node(const QModelIndex& index) const {
  return index.isValid() ? static_cast<const OutlineNode*>(index.internalPointer()) : nullptr;
}

QModelIndex OutlineItemModel::indexOf(const OutlineNode& node) const {
  if (node.parent == nullptr) return {};
  return createIndex(static_cast<int>(node.index), 0, &node);
}

OutlineRow OutlineItemModel::value(const QModelIndex& index) const {
  const OutlineNode* const shown = node(index);
  return outline_ == nullptr || shown == nullptr ? OutlineRow() : outline_->value(*shown);
}

OutlineNode* OutlineItemModel::parentNode(const QModelIndex& parent) const {
  if (outline_ == nullptr || parent.column() > 0) return nullptr;
  if (!parent.isValid()) return &outline_->tree().root();
  return static_cast<OutlineNode*>(parent.internalPointer());
}

QModelIndex OutlineItemModel::index(int row, int column, const QModelIndex& parent) const {
  if (row < 0 || column != 0 || row >= rowCount(parent)) return {};
  return indexOf(*parentNode(parent)->children[static_cast<std::size_t>(row)]);
}

QModelIndex OutlineItemModel::parent(const QModelIndex& child) const {
  const OutlineNode* const shown = node(child);
  return outline_ == nullptr || shown == nullptr ? QModelIndex() : indexOf(*shown->parent);
}

int OutlineItemModel::rowCount(const QModelIndex& parent) const {
  OutlineNode* const shown = parentNode(parent);
  if (shown == nullptr) return 0;
  outline_->tree().load(*shown);
  return static_cast<int>(shown->children.size());
}

bool OutlineItemModel::hasChildren(const QModelIndex& parent) const {
  const OutlineNode* const shown = parentNode(parent);
  return shown != nullptr && (parent.isValid() ? shown->expandable : !shown->children.empty());
}

QVariant OutlineItemModel::data(const QModelIndex& index, int role) const {
  if (outline_ == nullptr || !index.isValid()) return {};
  if (role == Qt::DisplayRole || role == Qt::AccessibleTextRole) {
    return QString::fromStdString(value(index).spokenText());
  }
  if (role == Qt::AccessibleDescriptionRole) {
    const QString level = QStringLiteral("level %1").arg(node(index)->level() + 1);
    // The toolkit tells screen readers of checked rows only.
    const OutlineRow shown = value(index);
    const CheckboxCell* const checkbox = shown.checkbox();
    const bool isUnchecked = checkbox != nullptr && checkbox->state == ControlState::off;
    return isUnchecked ? level + QStringLiteral(", not checked") : level;
  }
  if (role == Qt::CheckStateRole) {
    const OutlineRow shown = value(index);
    if (const CheckboxCell* const checkbox = shown.checkbox()) return checkState(checkbox->state);
  }
  return {};
}

Qt::ItemFlags OutlineItemModel::flags(const QModelIndex& index) const {
  if (!index.isValid()) return Qt::NoItemFlags;
  // Screen readers call a row checkable only if it also has a check state.
  return Qt::ItemIsEnabled | Qt::ItemIsSelectable | Qt::ItemIsUserCheckable;
}

}  // namespace quillmar
