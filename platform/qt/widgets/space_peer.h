#pragma once

#include "platform/qt/widgets/widget_peer.h"
#include "platform/widgets/stack_view.h"

namespace quillmar {

class SpacePeer final : public WidgetPeer {
 public:
  SpacePeer(FlexibleSpace& space, QtWindowPeer& window, QWidget& parent);

 protected:
  void update() override {}
  Extent contentHorizontal() const override { return {0, 0, 0, Extent::unlimited}; }
  Extent contentVertical(int /*width*/) const override { return {0, 0, 0, Extent::unlimited}; }
};

}  // namespace quillmar
