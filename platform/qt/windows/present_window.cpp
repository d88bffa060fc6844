#include "platform/qt/windows/present_window.h"

#include <QGuiApplication>
#include <QWidget>

#include "platform/qt/windows/x11_activation.h"

namespace quillmar {

namespace {

constexpr const char* waylandToken = "XDG_ACTIVATION_TOKEN";

/// Shows the window where it is and not as an icon.
void show(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
}

}  // namespace

void presentWindow(QWidget& window, const Activation& activation) {
  // Another platform plugin may have the interface, too, but no connection behind it.
  auto* const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
  if (x11 != nullptr && QGuiApplication::platformName() == QLatin1String("xcb")) {
    const X11Activation leave(x11->connection(), static_cast<xcb_window_t>(window.winId()),
                              activation);
    leave.announce();
    show(window);
    leave.activate();
    return;
  }
  // The toolkit takes the token from the environment.
  if (!activation.token.empty()) {
    qputenv(waylandToken, QByteArray::fromStdString(activation.token));
  }
  show(window);
  window.activateWindow();
  qunsetenv(waylandToken);
}

}  // namespace quillmar
