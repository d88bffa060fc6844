// Bringing a window to the front.

#pragma once

#include "platform/application.h"

class QWidget;

namespace quillmar {

/// Shows the window if it is hidden, in front of the others and with the focus, if the desktop
/// accepts the activation. An empty activation counts as a user action that happens now.
void presentWindow(QWidget& window, const Activation& activation);

}  // namespace quillmar
