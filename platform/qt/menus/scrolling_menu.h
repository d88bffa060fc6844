// The toolkit's menu as the program shows it. Main thread.

#pragma once

#include <QMenu>

namespace quillmar {

/// A menu that is longer than the screen scrolls: with the wheel, with the arrows at its ends, and
/// with the keyboard, which keeps the selected entry visible. So do its submenus.
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
