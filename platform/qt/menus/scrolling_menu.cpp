#include "platform/qt/menus/scrolling_menu.h"

#include <QMouseEvent>
#include <QWheelEvent>

#include "platform/qt/menus/menu_style.h"

namespace quillmar {

ScrollingMenu::ScrollingMenu(QWidget* parent) : QMenu(parent) {
  MenuStyle::applyTo(*this);
  connect(this, &QMenu::aboutToShow, this, [this] { MenuStyle::applyTo(*this); });
}

ScrollingMenu& ScrollingMenu::addSubmenu(const QString& text) {
  auto* const submenu = new ScrollingMenu(this);
  submenu->setTitle(text);
  addMenu(submenu);
  return *submenu;
}

void ScrollingMenu::keyPressEvent(QKeyEvent* event) {
  QMenu::keyPressEvent(event);
  QAction* const selected = activeAction();
  if (!isVisible() || selected == nullptr || isInSight(*selected)) return;
  // The toolkit follows the selection only where it leaves the rows that are seen, not where it
  // starts at the other end, or was left behind when the mouse scrolled.
  setActiveAction(selected);
  // That would open a submenu, as the mouse does.
  if (selected->menu() != nullptr) selected->menu()->close();
}

void ScrollingMenu::wheelEvent(QWheelEvent* event) {
  if (!isWindow()) {  // What it lies in scrolls.
    event->ignore();
    return;
  }
  QMenu::wheelEvent(event);
  // Another row is below the pointer now.
  QMouseEvent move(QEvent::MouseMove, event->position(), event->globalPosition(), Qt::NoButton,
                   event->buttons(), event->modifiers());
  QMenu::mouseMoveEvent(&move);
}

bool ScrollingMenu::isInSight(QAction& action) const {
  QRect seen = rect();
  const int arrow = style()->pixelMetric(QStyle::PM_MenuScrollerHeight, nullptr, this);
  if (actionGeometry(actions().constFirst()).top() < 0) seen.setTop(arrow);
  if (actionGeometry(actions().constLast()).top() > height()) seen.setBottom(height() - arrow);
  return seen.contains(actionGeometry(&action).center());
}

}  // namespace quillmar
