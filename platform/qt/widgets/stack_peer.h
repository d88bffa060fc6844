#pragma once

#include <vector>

#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/stack_view.h"

namespace quillmar {

class StackPeer final : public WidgetPeer {
 public:
  StackPeer(StackView& stack, QtWindowPeer& window, QWidget& parent);

  void subviewsChanged() override;
  void place(const QRect& frame) override;
  int firstLineMiddle(int width) const override;

 protected:
  void update() override {}
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;
  bool growsBeyondStatedWidth() const override { return true; }

 private:
  bool isRow() const { return stack_.orientation() == Orientation::horizontal; }
  /// The peers of the views that are not hidden.
  std::vector<WidgetPeer*> shown() const;
  /// The sum of the gaps between the peers.
  int gaps(const std::vector<WidgetPeer*>& peers) const;
  std::vector<Extent> horizontals(const std::vector<WidgetPeer*>& peers) const;
  /// The width of each peer, if `width` is available for all.
  std::vector<int> widths(const std::vector<WidgetPeer*>& peers, int width) const;
  static std::vector<Extent> verticals(const std::vector<WidgetPeer*>& peers,
                                       const std::vector<int>& widths);

  StackView& stack_;
};

}  // namespace quillmar
