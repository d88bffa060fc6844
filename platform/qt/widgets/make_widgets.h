// Creates the widgets of views.

#pragma once

class QWidget;

namespace quillmar {

class QtWindowPeer;
class View;

/// Creates the peers of the view and of all views in it. Their widgets are inside `parent`.
/// Precondition: the view has no peer.
void makeWidgets(View& view, QtWindowPeer& window, QWidget& parent);

}  // namespace quillmar
