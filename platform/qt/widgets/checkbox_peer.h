#pragma once

#include "platform/qt/widgets/checkbox_widget.h"
#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/checkbox.h"

namespace quillmar {

class CheckboxPeer final : public WidgetPeer {
 public:
  CheckboxPeer(Checkbox& checkbox, QtWindowPeer& window, QWidget& parent);

  int firstLineMiddle(int width) const override;

 protected:
  void update() override;
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;

 private:
  CheckboxWidget& box() const { return static_cast<CheckboxWidget&>(widget()); }

  Checkbox& checkbox_;
};

}  // namespace quillmar
