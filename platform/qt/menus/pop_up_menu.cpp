#include "platform/qt/menus/pop_up_menu.h"

#include <QCursor>
#include <QElapsedTimer>
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

/// The time that a click may take from the press, which closes the menu, to the request of the
/// panel that was clicked.
constexpr qint64 longestClick = 500;  // milliseconds

/// The menu that popped up last.
struct LastMenu {
  /// Destroys itself when it is closed.
  QPointer<QWidget> widget;
  /// Runs since a press of the mouse outside of the menu closed it.
  QElapsedTimer sinceClosingPress;
};

LastMenu& lastMenu() {
  static LastMenu last;
  return last;
}

void remember(QWidget& widget) {
  lastMenu().widget = &widget;
}

/// Closes what is open. True when that is all that the click asks for.
bool closeByClick() {
  LastMenu& last = lastMenu();
  const bool wasOpen = last.widget != nullptr && last.widget->isVisible();
  const bool hasClosed =
      last.sinceClosingPress.isValid() && !last.sinceClosingPress.hasExpired(longestClick);
  if (wasOpen) last.widget->close();
  last.sinceClosingPress.invalidate();
  return wasOpen || hasClosed;
}

/// The place of a click. MATE's panel sends a point of its own window instead of the screen; the
/// pointer is on the icon then.
QPoint placeOfClick(const std::optional<ScreenPoint>& position) {
  constexpr int thickestPanel = 150;
  const QPoint pointer = QCursor::pos();
  if (!position) return pointer;
  const QPoint place(position->x, position->y);
  return (place - pointer).manhattanLength() > thickestPanel ? pointer : place;
}

void noteClosingPress() {
  if (QGuiApplication::mouseButtons() != Qt::NoButton) lastMenu().sinceClosingPress.start();
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
  remember(*window);
  widget->show();
  presentWindow(*window, activation);
  widget->setFocus();
}

}  // namespace

void popUpMenuWidget(const Menu& menu, std::optional<ScreenPoint> position,
                     const Activation& activation, const MenuChoice& choice) {
  if (closeByClick() && position) return;
  if (!windowsCanBePlaced()) {
    showInWindow(menu, activation, choice);
    return;
  }
  auto* const widget = new ScrollingMenu;
  fillMenu(*widget, menu, choice);
  QObject::connect(widget, &QMenu::aboutToHide, widget, &QObject::deleteLater);
  QObject::connect(widget, &QMenu::aboutToHide, widget, noteClosingPress);
  remember(*widget);
  openAt(placeOfClick(position), *widget);
}

}  // namespace quillmar
