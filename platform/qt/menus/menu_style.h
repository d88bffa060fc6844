// Adapts the desktop's style to the program's menus. Main thread.

#pragma once

#include <QProxyStyle>

class QMenu;

namespace quillmar {

/// The application's style with three differences: a menu that is longer than the screen scrolls; a
/// long title ends in "…" instead of making the menu as wide as the screen; separators are visible
/// on dark desktops, too. Screen readers still get the whole text of an entry.
class MenuStyle final : public QProxyStyle {
 public:
  /// Gives the menu the style that all menus share. Call it again before the menu opens, because
  /// the application's style may have changed.
  static void applyTo(QMenu& widget);

  int styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                QStyleHintReturn* returnData) const override;
  QSize sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                         const QWidget* widget) const override;
  void drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                   const QWidget* widget) const override;

 private:
  MenuStyle() = default;

  /// Updates the base style to that of the application.
  void follow();

  QString followed_;
};

}  // namespace quillmar
