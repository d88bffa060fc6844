#pragma once

#include <QAbstractButton>

#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/button.h"

namespace quillmar {

class ButtonPeer final : public WidgetPeer {
 public:
  ButtonPeer(Button& button, QtWindowPeer& window, QWidget& parent);

 protected:
  void update() override;
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;

 private:
  QAbstractButton& widgetButton() const { return static_cast<QAbstractButton&>(widget()); }

  Button& button_;
};

}  // namespace quillmar
