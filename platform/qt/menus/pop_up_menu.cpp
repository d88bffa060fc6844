#include "platform/qt/menus/pop_up_menu.h"

#include <QGuiApplication>
#include <QPointer>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>
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

/// Gives the window the size of what is in it, or less height where that is too much for the
/// screen.
void fitToScreen(QScrollArea& window, QSize content) {
  // Panels may lie there, of which the display tells nothing.
  const int room = window.screen()->availableGeometry().height() * 4 / 5;
  if (content.height() > room) {
    content = QSize(content.width() + window.verticalScrollBar()->sizeHint().width(), room);
  }
  window.setFixedSize(content);
}

void showInWindow(const Menu& menu, const Activation& activation, const MenuChoice& choice) {
  // A menu in a window doesn't scroll by itself.
  auto* const window = new QScrollArea;
  window->setAttribute(Qt::WA_DeleteOnClose);
  window->setWindowTitle(QGuiApplication::applicationName());
  window->setFrameShape(QFrame::NoFrame);
  window->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
  auto* const widget = new ScrollingMenu(window);
  widget->setWindowFlags(Qt::Widget);
  fillMenu(*widget, menu, choice);
  window->setWidget(widget);
  fitToScreen(*window, widget->sizeHint());
  QObject::connect(widget, &QMenu::hovered, window, [window, widget](QAction* entry) {
    if (entry != widget->activeAction()) return;  // It is in a submenu.
    const QRect row = widget->actionGeometry(entry);
    window->ensureVisible(row.center().x(), row.center().y(), 0, row.height());
  });
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
