#include "platform/qt/menus/menu_widget.h"

#include <QApplication>
#include <QIcon>
#include <QPalette>
#include <QScreen>
#include <variant>

#include "platform/qt/images/image_icons.h"
#include "platform/text.h"
#include "platform/visible_text.h"
#include "shortcuts/shortcut_recorder_view.h"

namespace quillmar {

namespace {

/// The toolkit takes "&" for a mnemonic, in shortcuts as well as in titles.
QString withoutMnemonic(QString text) {
  return text.replace(QLatin1Char('&'), QStringLiteral("&&"));
}

/// The toolkit takes what follows a tab for a shortcut.
QString plainTitle(const std::string& title) {
  const std::string visible = text::withVisibleCharacters(text::onOneLine(title));
  return withoutMnemonic(QString::fromStdString(visible))
      .replace(QLatin1Char('\t'), QLatin1Char(' '));
}

/// Only shown: pressing the key does not choose the entry.
QString shortcutText(const KeyEquivalent& keyEquivalent) {
  const std::string text =
      text::withVisibleCharacters(ShortcutRecorderView::displayString(keyEquivalent));
  return text.empty() ? QString()
                      : QLatin1Char('\t') + withoutMnemonic(QString::fromStdString(text));
}

QIcon entryIcon(const std::optional<Image>& image, const QMenu& widget) {
  if (!image || !image->isTemplate) return iconOf(image);
  constexpr int side = 16;
  const QPalette& palette = widget.palette();
  return tintedIcon(*image,
                    {.text = palette.color(QPalette::WindowText),
                     .selectedText = palette.color(QPalette::HighlightedText)},
                    side, widget.devicePixelRatio());
}

/// `action` shows a submenu or an entry of the widget.
void showImage(const std::optional<Image>& image, QAction& action, QMenu& widget) {
  action.setIcon(entryIcon(image, widget));
  if (!image || !image->isTemplate) return;
  // By the time that the menu opens the desktop may have other colours.
  QObject::connect(&widget, &QMenu::aboutToShow, &action,
                   [image, &action, &widget] { action.setIcon(entryIcon(image, widget)); });
}

/// The toolkit has no mark for a mixed state. A check mark says that something is on.
void showState(const std::optional<ControlState>& state, QAction& action) {
  action.setCheckable(state.has_value());
  action.setChecked(state && *state != ControlState::off);
  // Only the next menu changes the state; until then a menu that stays open must show the old one.
  const bool isChecked = action.isChecked();
  QObject::connect(&action, &QAction::toggled, &action,
                   [&action, isChecked] { action.setChecked(isChecked); });
}

void addAction(QMenu& widget, const ActionEntry& entry, const MenuChoice& choice) {
  QString text = plainTitle(entry.title);
  if (entry.keyEquivalent) text += shortcutText(*entry.keyEquivalent);
  QAction* const action = widget.addAction(text);
  showImage(entry.image, *action, widget);
  showState(entry.state, *action);
  action->setEnabled(entry.enabled);
  QObject::connect(action, &QAction::triggered, &widget, [entry, choice] {
    choice.mainQueue.async([entry, choose = choice.choose] { choose(entry); });
  });
}

}  // namespace

void fillMenu(ScrollingMenu& widget, const Menu& menu, const MenuChoice& choice) {
  // Separators stay where the menu has them.
  widget.setSeparatorsCollapsible(false);
  for (const MenuEntry& entry : menu.entries) {
    if (const auto* const action = std::get_if<ActionEntry>(&entry)) {
      addAction(widget, *action, choice);
    } else if (const auto* const submenu = std::get_if<SubmenuEntry>(&entry)) {
      ScrollingMenu& child = widget.addSubmenu(plainTitle(submenu->title));
      showImage(submenu->image, *child.menuAction(), widget);
      child.menuAction()->setEnabled(submenu->enabled);
      fillMenu(child, submenu->submenu, choice);
    } else {
      widget.addSeparator();
    }
  }
}

void openAt(QPoint point, QMenu& widget) {
  while (QWidget* const open = QApplication::activePopupWidget()) {
    if (!open->close()) break;
  }
  const QScreen* const screen = QGuiApplication::screenAt(point);
  const int height = widget.sizeHint().height();
  // The toolkit opens a menu above the point only if the pointer is there, too. Elsewhere it moves
  // the menu over the point.
  if (screen != nullptr && point.y() + height > screen->availableGeometry().bottom() + 1) {
    point.ry() -= height;
  }
  widget.popup(point);
}

}  // namespace quillmar
