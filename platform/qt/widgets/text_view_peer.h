#pragma once

#include "platform/qt/widgets/text_view_widget.h"
#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/text_view.h"

namespace quillmar {

class TextViewPeer final : public WidgetPeer {
 public:
  TextViewPeer(TextView& textView, QtWindowPeer& window, QWidget& parent);

  int firstLineMiddle(int width) const override;

 protected:
  void update() override;
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;
  bool scrolls() const override { return true; }

 private:
  TextViewWidget& edit() const { return static_cast<TextViewWidget&>(widget()); }
  /// Between the edge and the text.
  int margin() const;

  TextView& textView_;
};

}  // namespace quillmar
