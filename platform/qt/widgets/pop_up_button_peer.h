#pragma once

#include <QComboBox>

#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/pop_up_button.h"

namespace quillmar {

/// Known to accessible_widgets.cpp.
class PopUpWidget final : public QComboBox {
 public:
  explicit PopUpWidget(QWidget* parent) : QComboBox(parent) {}

 protected:
  /// Ignores the wheel, so that scrolling a form changes no values.
  void wheelEvent(QWheelEvent* event) override;
  void paintEvent(QPaintEvent* event) override;
};

class PopUpButtonPeer final : public WidgetPeer {
 public:
  PopUpButtonPeer(PopUpButton& popUp, QtWindowPeer& window, QWidget& parent);

 protected:
  void update() override;
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;

 private:
  QComboBox& box() const { return static_cast<QComboBox&>(widget()); }

  PopUpButton& popUp_;
};

}  // namespace quillmar
