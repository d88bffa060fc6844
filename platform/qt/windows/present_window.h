// Bringing a window to the front.

#pragma once

#include "platform/application.h"

class QWidget;

namespace quillmar {

/// Shows the window if it is hidden, in front of the others and with the focus, as far as the
/// desktop lets `activation` have that. Without one the window comes forward as if the user had
/// asked for it just now.
void presentWindow(QWidget& window, const Activation& activation);

}  // namespace quillmar
