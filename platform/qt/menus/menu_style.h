// Adapts the desktop's style to the program's menus. Main thread.

#pragma once

#include <QProxyStyle>

class QMenu;

namespace quillmar {

/// The application's style, except that a menu longer than the screen scrolls, that a long title
/// ends in "…" instead of making the menu as wide as the screen, and that separators are seen on
/// dark desktops as well as on light ones. The entries keep their whole text for assistive
/// technology.
class MenuStyle final : public QProxyStyle {
 public:
  /// Gives the menu the one style that all menus share. Before each opening, too: the application
  /// may have another style by then.
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
