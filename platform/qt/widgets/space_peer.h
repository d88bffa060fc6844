#pragma once

#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/stack_view.h"

namespace quillmar {

class SpacePeer final : public WidgetPeer {
 public:
  SpacePeer(FlexibleSpace& space, QtWindowPeer& window, QWidget& parent);

 protected:
  void update() override {}
  // Flexible along the stack that it lies in, and nothing across.
  Extent contentHorizontal() const override;
  Extent contentVertical(int width) const override;

 private:
  Extent lengthIn(Orientation direction) const;
};

}  // namespace quillmar
