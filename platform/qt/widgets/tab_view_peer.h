#pragma once

#include <QTabBar>

#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/tab_view.h"

namespace quillmar {

class TabViewPeer final : public WidgetPeer {
 public:
  TabViewPeer(TabView& tabView, QtWindowPeer& window, QWidget& parent);

  void subviewsChanged() override;
  void place(const QRect& frame) override;
  QWidget& keyWidget() const override { return bar_ == nullptr ? widget() : *bar_; }

 protected:
  void update() override;
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;
  bool growsBeyondStatedWidth() const override { return true; }

 private:
  std::vector<WidgetPeer*> contents() const;

  TabView& tabView_;
  /// A child of the widget. Null during the construction, in which keyWidget() is called already.
  QTabBar* bar_ = nullptr;
};

}  // namespace quillmar
