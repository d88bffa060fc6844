// The toolkit's menu as the program shows it. Main thread.

#pragma once

#include <QMenu>

namespace quillmar {

/// Longer than the screen, it scrolls: with the keyboard, whose selection is always in sight, with
/// the wheel, and with the arrows at its ends. Its submenus are such menus, too.
class ScrollingMenu final : public QMenu {
 public:
  explicit ScrollingMenu(QWidget* parent = nullptr);

  /// The submenu belongs to this menu.
  ScrollingMenu& addSubmenu(const QString& text);

 protected:
  void keyPressEvent(QKeyEvent* event) override;
  void wheelEvent(QWheelEvent* event) override;

 private:
  bool isInSight(QAction& action) const;
};

}  // namespace quillmar
