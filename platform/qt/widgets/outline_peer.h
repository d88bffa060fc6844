#pragma once

#include "platform/qt/widgets/outline_item_model.h"
#include "platform/qt/widgets/outline_widget.h"
#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/outline_view.h"

namespace quillmar {

class OutlinePeer final : public WidgetPeer, public OutlineObserver {
 public:
  OutlinePeer(OutlineView& outline, QtWindowPeer& window, QWidget& parent);
  ~OutlinePeer() override;

  void rowsChanged() override;
  void valuesChanged() override;
  void expansionChanged(const OutlineNode& node) override;
  void selectionChanged() override;
  std::size_t rowsPerPage() const override;

 protected:
  void update() override;
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;
  bool scrolls() const override { return true; }

 private:
  OutlineWidget& tree() const { return static_cast<OutlineWidget&>(widget()); }
  /// Calls a function of the outline with the index of the row, unless the program acts.
  template <class Verb>
  void user(const QModelIndex& index, const Verb& verb);
  void userSelected();
  void showExpansion(const OutlineNode& node);
  void showSelection(bool scrolls);

  OutlineView& outline_;
  /// A child of the widget.
  OutlineItemModel* items_;
  bool programActs_ = false;
};

}  // namespace quillmar
