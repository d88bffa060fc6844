#pragma once

#include <QScrollArea>

#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/scroll_view.h"

namespace quillmar {

class ScrollViewPeer final : public WidgetPeer {
 public:
  ScrollViewPeer(ScrollView& scrollView, QtWindowPeer& window, QWidget& parent);

  void subviewsChanged() override;
  void place(const QRect& frame) override;
  bool scroll(ScrollStep step) override;
  /// Scrolls until as much as possible of a widget in the content is visible.
  void reveal(QWidget& widget);

 protected:
  void update() override {}
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;
  bool scrolls() const override { return true; }

 private:
  QScrollArea& area() const { return static_cast<QScrollArea&>(widget()); }
  WidgetPeer* content() const;
  int barWidth() const;

  ScrollView& scrollView_;
};

}  // namespace quillmar
