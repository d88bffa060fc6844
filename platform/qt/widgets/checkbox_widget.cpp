#include "platform/qt/widgets/checkbox_widget.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionButton>
#include <algorithm>

#include "platform/qt/widgets/checkbox_indicator.h"
#include "platform/qt/widgets/extent.h"
#include "platform/qt/widgets/focus_ring.h"

namespace quillmar {

namespace {

constexpr int titleFlags = Qt::TextShowMnemonic | Qt::TextWordWrap;
/// Around the title, for the focus ring.
constexpr int margin = focusRingWidth + 1;

}  // namespace

int CheckboxWidget::lineHeight() const {
  const int indicator = style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this);
  return std::max(indicator, fontMetrics().height() + 2 * margin);
}

int CheckboxWidget::roomBeforeTitle() const {
  return style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this) +
         style()->pixelMetric(QStyle::PM_CheckBoxLabelSpacing, nullptr, this);
}

QSize CheckboxWidget::titleSize(int width) const {
  return fontMetrics()
      .boundingRect(QRect(0, 0, width, Extent::unlimited), titleFlags, text())
      .size();
}

int CheckboxWidget::widthFor(int titleWidth) const {
  return text().isEmpty() ? style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this)
                          : roomBeforeTitle() + titleWidth + margin;
}

int CheckboxWidget::heightForWidth(int width) const {
  const int title = titleSize(std::max(1, width - widthFor(0))).height();
  return std::max(lineHeight(), title + 2 * margin);
}

QSize CheckboxWidget::sizeHint() const {
  return {widthFor(titleSize(Extent::unlimited).width()), lineHeight()};
}

void CheckboxWidget::keyPressEvent(QKeyEvent* event) {
  if (event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) return event->ignore();
  QCheckBox::keyPressEvent(event);
}

void CheckboxWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  QStyleOptionButton option;
  initStyleOption(&option);
  const int indicatorHeight = style()->pixelMetric(QStyle::PM_IndicatorHeight, nullptr, this);
  const QRect indicator(0, (lineHeight() - indicatorHeight) / 2,
                        style()->pixelMetric(QStyle::PM_IndicatorWidth, nullptr, this),
                        indicatorHeight);
  option.rect = QStyle::visualRect(layoutDirection(), rect(), indicator);
  drawCheckboxIndicator(painter, option, *this);

  const int top = (lineHeight() - fontMetrics().height()) / 2;
  QRect title(QPoint(roomBeforeTitle(), top), titleSize(std::max(1, width() - widthFor(0))));
  title = QStyle::visualRect(layoutDirection(), rect(), title);
  style()->drawItemText(&painter, title, titleFlags | Qt::AlignLeft, palette(), isEnabled(), text(),
                        QPalette::WindowText);
  if (!hasFocus()) return;
  const QRect ringed = text().isEmpty() ? option.rect : title;
  drawFocusRing(painter, ringed.adjusted(-margin, -margin, margin, margin),
                palette().color(QPalette::Highlight));
}

}  // namespace quillmar
