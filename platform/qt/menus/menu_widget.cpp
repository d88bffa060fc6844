#include "platform/qt/menus/menu_widget.h"

#include <QIcon>
#include <QPainter>
#include <QPalette>
#include <variant>

namespace quillmar {

namespace {

/// The toolkit takes "&" for a mnemonic.
QString plainTitle(const std::string& title) {
  return QString::fromStdString(title).replace(QLatin1Char('&'), QStringLiteral("&&"));
}

/// Symbols take the colour of the text beside them.
QIcon iconOf(const std::optional<Image>& image, const QMenu& widget) {
  if (!image) return {};
  const QIcon icon = QIcon::fromTheme(QString::fromStdString(image->name));
  if (icon.isNull()) return {};
  constexpr int side = 16;
  QPixmap pixmap = icon.pixmap(QSize(side, side), widget.devicePixelRatio());
  QPainter tint(&pixmap);
  tint.setCompositionMode(QPainter::CompositionMode_SourceIn);
  tint.fillRect(pixmap.rect(), widget.palette().color(QPalette::WindowText));
  tint.end();
  return QIcon(pixmap);
}

void addAction(QMenu& widget, const ActionEntry& entry, const MenuChoice& choice) {
  QAction* const action = widget.addAction(iconOf(entry.image, widget), plainTitle(entry.title));
  QObject::connect(action, &QAction::triggered, &widget, [entry, choice] {
    choice.mainQueue.async([entry, choose = choice.choose] { choose(entry); });
  });
}

}  // namespace

void fillMenu(QMenu& widget, const Menu& menu, const MenuChoice& choice) {
  // Separators stay where the menu has them.
  widget.setSeparatorsCollapsible(false);
  for (const MenuEntry& entry : menu.entries) {
    if (const auto* const action = std::get_if<ActionEntry>(&entry)) {
      addAction(widget, *action, choice);
    } else if (const auto* const submenu = std::get_if<SubmenuEntry>(&entry)) {
      QMenu* const child = widget.addMenu(plainTitle(submenu->title));
      child->setIcon(iconOf(submenu->image, widget));
      fillMenu(*child, submenu->submenu, choice);
    } else {
      widget.addSeparator();
    }
  }
}

}  // namespace quillmar
