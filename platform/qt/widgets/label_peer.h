#pragma once

#include "platform/qt/widgets/text_widget.h"
#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/label.h"

namespace quillmar {

class LabelPeer final : public WidgetPeer {
 public:
  LabelPeer(Label& label, QtWindowPeer& window, QWidget& parent);

  int firstLineMiddle(int width) const override;

 protected:
  void update() override;
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;

 private:
  TextWidget& text() const { return static_cast<TextWidget&>(widget()); }

  Label& label_;
};

}  // namespace quillmar
