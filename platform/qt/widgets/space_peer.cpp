#include "platform/qt/widgets/space_peer.h"

namespace quillmar {

SpacePeer::SpacePeer(FlexibleSpace& space, QtWindowPeer& window, QWidget& parent)
    : WidgetPeer(space, window, new QWidget(&parent)) {}

}  // namespace quillmar
