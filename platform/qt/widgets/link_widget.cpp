#include "platform/qt/widgets/link_widget.h"

#include <QPainter>
#include <QStyleOption>

namespace quillmar {

namespace {

/// Room for the mark of the focus above and below the text, which begins where others do.
constexpr int margin = 2;

}  // namespace

LinkWidget::LinkWidget(QWidget* parent) : QAbstractButton(parent) {
  setFocusPolicy(Qt::StrongFocus);
  setCursor(Qt::PointingHandCursor);
}

QString LinkWidget::title() const {
  return text().replace(QStringLiteral("&&"), QStringLiteral("&"));
}

QSize LinkWidget::sizeHint() const {
  const QSize text = fontMetrics().size(Qt::TextShowMnemonic, this->text());
  return text.grownBy(QMargins(0, margin, 0, margin));
}

void LinkWidget::paintEvent(QPaintEvent* /*event*/) {
  QPainter painter(this);
  QFont font = this->font();
  font.setUnderline(isEnabled() && (underMouse() || hasFocus()));
  painter.setFont(font);
  const QPalette::ColorGroup group = isEnabled() ? QPalette::Active : QPalette::Disabled;
  painter.setPen(palette().color(group, isEnabled() ? QPalette::Link : QPalette::WindowText));
  // The doubled ampersands of the text stand for themselves.
  painter.drawText(rect(), Qt::AlignCenter | Qt::TextHideMnemonic, text());
  if (!hasFocus()) return;
  QStyleOptionFocusRect option;
  option.initFrom(this);
  option.backgroundColor = palette().color(QPalette::Window);
  style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
}

void LinkWidget::enterEvent(QEnterEvent* event) {
  QAbstractButton::enterEvent(event);
  QWidget::update();
}

void LinkWidget::leaveEvent(QEvent* event) {
  QAbstractButton::leaveEvent(event);
  QWidget::update();
}

}  // namespace quillmar
