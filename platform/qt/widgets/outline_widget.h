// The toolkit's tree view, as outlines use it: keys are left to the model, and a click on a
// checkbox does not select its row.

#pragma once

#include <QPersistentModelIndex>
#include <QTreeView>
#include <functional>
#include <optional>
#include <string>

#include "platform/qt/widgets/outline_delegate.h"
#include "platform/qt/widgets/ringed_area.h"

namespace quillmar {

class OutlineWidget final : public RingedArea<QTreeView> {
 public:
  explicit OutlineWidget(QWidget* parent);

  /// Called with a checkbox that the user has clicked. May destroy the widget's peer.
  void setOnCheckbox(
      std::function<void(const QModelIndex& index, const std::string& identifier)> onCheckbox) {
    onCheckbox_ = std::move(onCheckbox);
  }

  /// Scrolls until the whole row is in sight.
  void reveal(const QModelIndex& index);

  int rowsPerPage() const;
  int rowHeight() const;

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void mousePressEvent(QMouseEvent* event) override;
  void mouseMoveEvent(QMouseEvent* event) override;
  void mouseReleaseEvent(QMouseEvent* event) override;
  void mouseDoubleClickEvent(QMouseEvent* event) override;

 private:
  std::optional<std::string> checkboxAt(const QPoint& position) const;
  bool pressCheckbox(const QMouseEvent& event);

  OutlineDelegate* delegate_;
  /// The pressed checkbox.
  QPersistentModelIndex pressedIndex_;
  std::string pressedIdentifier_;
  std::function<void(const QModelIndex&, const std::string&)> onCheckbox_;
};

}  // namespace quillmar
