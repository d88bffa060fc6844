#include "platform/qt/widgets/outline_delegate.h"

#include <QAbstractItemView>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <QToolTip>
#include <QtMath>
#include <algorithm>
#include <numeric>

#include "platform/qt/images/image_icons.h"
#include "platform/qt/widgets/checkbox_indicator.h"
#include "platform/qt/widgets/colors.h"
#include "platform/qt/widgets/fonts.h"
#include "platform/qt/widgets/outline_item_model.h"
#include "platform/qt/widgets/visible_text.h"
#include "platform/qt/widgets/widget_peer.h"
#include "platform/text.h"

namespace quillmar {

namespace {

/// Above and below a text.
constexpr int verticalMargin = 2;
/// Of a text. More does not fit on a screen, and drawing it would take long.
constexpr std::size_t maximumShownBytes = 4000;
/// The fraction of the text colour in tertiary labels.
constexpr float tertiaryLabelShare = 0.5F;

const OutlineItemModel& modelOf(const QModelIndex& index) {
  return static_cast<const OutlineItemModel&>(*index.model());
}

QString shownText(const TextCell& cell) {
  const std::string_view shown = text::firstBytes(cell.text, maximumShownBytes);
  return withVisibleCharacters(QString::fromStdString(text::onOneLine(shown)));
}

QPalette::ColorGroup colorGroup(const QStyleOptionViewItem& option) {
  if (!(option.state & QStyle::State_Enabled)) return QPalette::Disabled;
  return option.state & QStyle::State_Active ? QPalette::Active : QPalette::Inactive;
}

bool isSelected(const QStyleOptionViewItem& option) {
  return option.state & QStyle::State_Selected;
}

QColor textColor(const QStyleOptionViewItem& option, TextColor color) {
  const auto of = [&](QPalette::ColorRole role) {
    return option.palette.color(colorGroup(option), role);
  };
  const QColor text = of(isSelected(option) ? QPalette::HighlightedText : QPalette::Text);
  const QColor background = of(isSelected(option) ? QPalette::Highlight : QPalette::Base);
  switch (color) {
    case TextColor::label:
      return text;
    case TextColor::secondaryLabel:
      return mixed(background, text, isSelected(option) ? 1.0F : secondaryLabelShare);
    case TextColor::tertiaryLabel:
      return mixed(background, text, isSelected(option) ? 1.0F : tertiaryLabelShare);
  }
  return text;
}

void paintSymbol(QPainter& painter, const Image& image, const QRect& place,
                 const QStyleOptionViewItem& option) {
  const int side = std::min(place.width(), place.height());
  const qreal ratio = painter.device()->devicePixelRatio();
  const QColor color = textColor(option, TextColor::label);
  const QIcon icon =
      image.isTemplate ? tintedIcon(image, {color, color}, side, ratio) : iconOf(image);
  icon.paint(&painter, place, Qt::AlignCenter,
             option.state & QStyle::State_Enabled ? QIcon::Normal : QIcon::Disabled);
}

}  // namespace

QSize OutlineDelegate::naturalSize(const OutlineCell& cell) const {
  if (std::holds_alternative<CheckboxCell>(cell)) {
    return {view_.style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, &view_),
            view_.style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, &view_)};
  }
  if (const auto* const symbol = std::get_if<SymbolCell>(&cell)) {
    return {pixels(symbol->width), pixels(symbol->width)};
  }
  const auto& text = std::get<TextCell>(cell);
  const QFontMetricsF metrics(desktopFont(text.font, view_));
  // A height that is rounded down would cut off underscores.
  return {qCeil(metrics.horizontalAdvance(shownText(text))) + 1, qCeil(metrics.height())};
}

std::vector<QRect> OutlineDelegate::places(const OutlineRow& row, const QRect& rowRect) const {
  const int spacing = pixels(OutlineView::cellSpacing);
  std::vector<QSize> sizes;
  int missing = pixels(OutlineView::trailingMargin) - rowRect.width();
  for (const OutlineCell& cell : row.cells) {
    sizes.push_back(naturalSize(cell));
    missing += sizes.back().width() + (sizes.size() > 1 ? spacing : 0);
  }
  // First the texts that are to give way, then, from the end, those that need not.
  for (const bool truncates : {true, false}) {
    for (std::size_t i = sizes.size(); i-- > 0 && missing > 0;) {
      const auto* const text = std::get_if<TextCell>(&row.cells[i]);
      if (text == nullptr || text->truncates != truncates) continue;
      const int taken = std::min(missing, sizes[i].width());
      sizes[i].rwidth() -= taken;
      missing -= taken;
    }
  }
  std::vector<QRect> places;
  int left = rowRect.left();
  for (const QSize& size : sizes) {
    const QRect place(QPoint(left, rowRect.center().y() + 1 - (size.height() + 1) / 2), size);
    places.push_back(QStyle::visualRect(view_.layoutDirection(), rowRect, place));
    left += size.width() + spacing;
  }
  return places;
}

std::optional<std::string> OutlineDelegate::checkboxAt(const QPoint& position, const QRect& rowRect,
                                                       const QModelIndex& index) const {
  const OutlineRow row = modelOf(index).value(index);
  const std::vector<QRect> cells = places(row, rowRect);
  // The whole height of the row, and half of the space beside the box.
  const int aside = pixels(OutlineView::cellSpacing / 2);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const auto* const checkbox = std::get_if<CheckboxCell>(&row.cells[i]);
    const QRect box(cells[i].left(), rowRect.top(), cells[i].width(), rowRect.height());
    if (checkbox != nullptr && box.adjusted(-aside, 0, aside, 0).contains(position)) {
      return checkbox->identifier;
    }
  }
  return std::nullopt;
}

void OutlineDelegate::paint(QPainter* painter, const QStyleOptionViewItem& option,
                            const QModelIndex& index) const {
  view_.style()->drawPrimitive(QStyle::PE_PanelItemViewItem, &option, painter, &view_);
  const OutlineRow row = modelOf(index).value(index);
  const std::vector<QRect> cells = places(row, option.rect);
  for (std::size_t i = 0; i < cells.size(); ++i) {
    if (!cells[i].isEmpty()) paintCell(*painter, row.cells[i], cells[i], option);
  }
}

void OutlineDelegate::paintCell(QPainter& painter, const OutlineCell& cell, const QRect& place,
                                const QStyleOptionViewItem& option) const {
  if (const auto* const text = std::get_if<TextCell>(&cell)) {
    paintText(painter, *text, place, option);
  } else if (const auto* const symbol = std::get_if<SymbolCell>(&cell)) {
    if (symbol->image) paintSymbol(painter, *symbol->image, place, option);
  } else {
    const auto& checkbox = std::get<CheckboxCell>(cell);
    QStyleOptionButton box;
    box.initFrom(&view_);
    box.rect = place;
    box.state = option.state & (QStyle::State_Enabled | QStyle::State_Active);
    if (checkbox.state == ControlState::off) box.state |= QStyle::State_Off;
    if (checkbox.state == ControlState::on) box.state |= QStyle::State_On;
    if (checkbox.state == ControlState::mixed) box.state |= QStyle::State_NoChange;
    drawCheckboxIndicator(painter, box, view_);
  }
}

void OutlineDelegate::paintText(QPainter& painter, const TextCell& text, const QRect& place,
                                const QStyleOptionViewItem& option) const {
  const QFont font = desktopFont(text.font, view_);
  painter.setFont(font);
  painter.setPen(textColor(option, text.color));
  painter.drawText(place, Qt::AlignLeft | Qt::AlignTop | Qt::TextSingleLine,
                   QFontMetrics(font).elidedText(shownText(text), Qt::ElideRight, place.width()));
}

QSize OutlineDelegate::sizeHint(const QStyleOptionViewItem& /*option*/,
                                const QModelIndex& /*index*/) const {
  const int text = QFontMetrics(desktopFont({}, view_)).height() + 2 * verticalMargin;
  return {0, std::max(pixels(OutlineView::rowHeight), text)};
}

bool OutlineDelegate::helpEvent(QHelpEvent* event, QAbstractItemView* view,
                                const QStyleOptionViewItem& option, const QModelIndex& index) {
  if (event->type() != QEvent::ToolTip || !index.isValid()) {
    return QStyledItemDelegate::helpEvent(event, view, option, index);
  }
  const OutlineRow row = modelOf(index).value(index);
  const std::vector<QRect> cells = places(row, option.rect);
  QStringList cut;
  for (std::size_t i = 0; i < cells.size(); ++i) {
    const auto* const text = std::get_if<TextCell>(&row.cells[i]);
    if (text != nullptr && cells[i].width() < naturalSize(*text).width()) cut += shownText(*text);
  }
  // The texts are plain, which tool tips are not.
  QToolTip::showText(event->globalPos(), cut.join(u'\n').toHtmlEscaped(), view);
  return true;
}

}  // namespace quillmar
