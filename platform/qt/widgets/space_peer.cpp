#include "platform/qt/widgets/space_peer.h"

namespace quillmar {

SpacePeer::SpacePeer(FlexibleSpace& space, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(space, window, new QWidget(&parent)) {}

Extent SpacePeer::contentHorizontal() const {
  return lengthIn(Orientation::horizontal);
}

Extent SpacePeer::contentVertical(int /*width*/) const {
  return lengthIn(Orientation::vertical);
}

Extent SpacePeer::lengthIn(Orientation direction) const {
  const auto* const stack = dynamic_cast<StackView*>(view().superview());
  const bool isFlexible = stack != nullptr && stack->orientation() == direction;
  return {0, 0, 0, isFlexible ? Extent::unlimited : 0};
}

}  // namespace quillmar
