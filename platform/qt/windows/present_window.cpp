#include "platform/qt/windows/present_window.h"

#include <QApplication>
#include <QWidget>

#include "platform/qt/windows/window_manager_start.h"
#include "platform/qt/windows/x11_activation.h"
#include "platform/qt/windows/x11_requests.h"

namespace quillmar {

namespace {

constexpr const char* waylandToken = "XDG_ACTIVATION_TOKEN";

/// Shows the window where it is and not as an icon.
void show(QWidget& window) {
  window.setWindowState(window.windowState() & ~Qt::WindowMinimized);
  window.show();
  window.raise();
  // Hiding a window makes it inactive. If it is shown again before the display has reported that it
  // lost the focus, the toolkit takes the loss and the new gain together for no change.
  if (QGuiApplication::focusWindow() == window.windowHandle()) {
    QApplication::setActiveWindow(&window);
  }
}

}  // namespace

void presentWindow(QWidget& window, const Activation& activation) {
  if (xcb_connection_t* const x11 = x11Connection()) {
    // Before the window is shown, so that a window manager that starts meanwhile is noticed.
    if (!x11HasWindowManager(x11)) WindowManagerStart::shared().setWindow(window);
    const X11Activation request(x11, static_cast<xcb_window_t>(window.winId()), activation);
    request.announce();
    show(window);
    request.activate();
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
