#include "platform/qt/menus/pop_up_menu.h"

#include <QGuiApplication>
#include <QPointer>
#include <QVBoxLayout>
#include <QWidget>

#include "platform/qt/windows/present_window.h"

namespace quillmar {

namespace {

bool windowsCanBePlaced() {
  return !QGuiApplication::platformName().startsWith(QLatin1String("wayland"));
}

/// The one that is open; closed, it destroys itself.
QPointer<QWidget>& openMenu() {
  static QPointer<QWidget> widget;
  return widget;
}

void showInWindow(const Menu& menu, const Activation& activation, const MenuChoice& choice) {
  auto* const window = new QWidget;
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->setWindowTitle(QGuiApplication::applicationName());
  auto* const layout = new QVBoxLayout(window);
  layout->setContentsMargins(0, 0, 0, 0);
  layout->setSizeConstraint(QLayout::SetFixedSize);
  auto* const widget = new ScrollingMenu(window);
  widget->setWindowFlags(Qt::Widget);
  fillMenu(*widget, menu, choice);
  layout->addWidget(widget);
  QObject::connect(widget, &QMenu::triggered, window, &QWidget::close);
  QObject::connect(widget, &QMenu::aboutToHide, window, &QWidget::close);
  openMenu() = window;
  widget->show();
  presentWindow(*window, activation);
  widget->setFocus();
}

}  // namespace

void popUpMenuWidget(const Menu& menu, const Activation& activation, const MenuChoice& choice) {
  if (openMenu() != nullptr) openMenu()->close();
  if (!windowsCanBePlaced()) {
    showInWindow(menu, activation, choice);
    return;
  }
  auto* const widget = new ScrollingMenu;
  fillMenu(*widget, menu, choice);
  QObject::connect(widget, &QMenu::aboutToHide, widget, &QObject::deleteLater);
  openMenu() = widget;
  openAtPointer(*widget);
}

}  // namespace quillmar
