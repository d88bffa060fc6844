#include "platform/qt/menus/menu_style.h"

#include <QApplication>
#include <QMenu>
#include <QPainter>
#include <QPointer>
#include <QScreen>
#include <QStyleFactory>
#include <QStyleOptionMenuItem>
#include <algorithm>

#include "platform/qt/widgets/colors.h"

namespace quillmar {

namespace {

/// In average characters of the menu's font.
constexpr int longestTitle = 60;

/// Of the text's colour in a separator, the rest being the menu's.
constexpr float separatorShare = 0.3F;

constexpr QLatin1Char beforeShortcut('\t');

/// What a title may take, in device-independent pixels. Half of a screen is left for the icon, the
/// shortcut and the arrow, however large the font is.
int roomForTitle(const QFontMetrics& metrics, const QWidget* menu) {
  const int room = longestTitle * metrics.averageCharWidth();
  return menu != nullptr ? std::min(room, menu->screen()->availableGeometry().width() / 2) : room;
}

/// Between the colours of texts and of what is behind them, in the menu's width.
void drawSeparator(const QStyleOptionMenuItem& separator, QPainter& painter) {
  const QColor text = separator.palette.color(QPalette::WindowText);
  const QColor paper = separator.palette.color(QPalette::Window);
  const QRect& row = separator.rect;
  constexpr int margin = 4;
  painter.fillRect(row.left() + margin, row.center().y(), row.width() - 2 * margin, 1,
                   mixed(paper, text, separatorShare));
}

/// The text of an entry with its title cut to the room.
QString withTitleElided(const QString& text, const QFontMetrics& metrics, int room) {
  const qsizetype titleEnd = text.indexOf(beforeShortcut);
  const QString shown = titleEnd < 0 ? text : text.left(titleEnd);
  // Cut between the two ampersands that stand for one, a single one would be left.
  const QString title = QString(shown).replace(QStringLiteral("&&"), QStringLiteral("&"));
  QString elided = metrics.elidedText(title, Qt::ElideRight, room);
  if (elided == title) return text;
  elided.replace(QLatin1Char('&'), QStringLiteral("&&"));
  return titleEnd < 0 ? elided : elided + text.mid(titleEnd);
}

}  // namespace

void MenuStyle::applyTo(QMenu& widget) {
  // Goes with the application: styles must not outlive it.
  static QPointer<MenuStyle> style;
  if (!style) {
    style = new MenuStyle;
    style->setParent(QApplication::instance());
  }
  style->follow();
  widget.setStyle(style);
}

void MenuStyle::follow() {
  // A style of its own kind: the application's cannot be below two.
  const QString name = QApplication::style()->name();
  if (followed_ == name) return;
  followed_ = name;
  setBaseStyle(QStyleFactory::create(name));
}

int MenuStyle::styleHint(StyleHint hint, const QStyleOption* option, const QWidget* widget,
                         QStyleHintReturn* returnData) const {
  if (hint == SH_Menu_Scrollable) return 1;
  return QProxyStyle::styleHint(hint, option, widget, returnData);
}

QSize MenuStyle::sizeFromContents(ContentsType type, const QStyleOption* option, const QSize& size,
                                  const QWidget* widget) const {
  const auto* const entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (type != CT_MenuItem || entry == nullptr) {
    return QProxyStyle::sizeFromContents(type, option, size, widget);
  }
  const int room = roomForTitle(entry->fontMetrics, widget);
  return QProxyStyle::sizeFromContents(type, option,
                                       QSize(std::min(size.width(), room), size.height()), widget);
}

void MenuStyle::drawControl(ControlElement element, const QStyleOption* option, QPainter* painter,
                            const QWidget* widget) const {
  const auto* const entry = qstyleoption_cast<const QStyleOptionMenuItem*>(option);
  if (element != CE_MenuItem || entry == nullptr) {
    QProxyStyle::drawControl(element, option, painter, widget);
    return;
  }
  if (entry->menuItemType == QStyleOptionMenuItem::Separator) {
    drawSeparator(*entry, *painter);
    return;
  }
  QStyleOptionMenuItem shown = *entry;
  const QFontMetrics metrics(entry->font);
  shown.text = withTitleElided(entry->text, metrics, roomForTitle(metrics, widget));
  QProxyStyle::drawControl(element, &shown, painter, widget);
}

}  // namespace quillmar
