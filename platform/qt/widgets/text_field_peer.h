#pragma once

#include <QLineEdit>

#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/text_field.h"

namespace quillmar {

class TextFieldPeer final : public WidgetPeer {
 public:
  TextFieldPeer(TextField& field, QtWindowPeer& window, QWidget& parent);

  void takeFocus() override;

 protected:
  void update() override;
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;

 private:
  QLineEdit& line() const { return static_cast<QLineEdit&>(widget()); }

  TextField& field_;
};

}  // namespace quillmar
