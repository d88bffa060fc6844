#pragma once

#include "platform/qt/widgets/custom_widget.h"
#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/custom_view.h"

namespace quillmar {

class CustomViewPeer final : public WidgetPeer {
 public:
  CustomViewPeer(CustomView& view, QtWindowPeer& window, QWidget& parent);
  ~CustomViewPeer() override;

 protected:
  void update() override;
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;

 private:
  CustomWidget& custom() const { return static_cast<CustomWidget&>(widget()); }
  void paint(CustomWidget& widget) const;
  /// The natural size of the view, or more if its texts need it.
  QSize neededSize() const;

  CustomView& view_;
  bool capturesKeyboard_ = false;
};

}  // namespace quillmar
