// Creates the widgets of views.

#pragma once

class QWidget;

namespace quillmar {

class QtWindowPeer;
class View;

/// Gives the view and all views in it their peers, whose widgets lie in `parent`. Precondition: the
/// view has none.
void makeWidgets(View& view, QtWindowPeer& window, QWidget& parent);

}  // namespace quillmar
