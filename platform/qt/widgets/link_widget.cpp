#include "platform/qt/widgets/link_widget.h"

#include <QPainter>
#include <QStyleOption>

#include "platform/qt/widgets/colors.h"

namespace quillmar {

namespace {

/// Room for the mark of the focus above and below the text, which begins where others do.
constexpr int margin = 2;

QColor linkColor(const QPalette& palette) {
  const auto active = [&](QPalette::ColorRole role) {
    return palette.color(QPalette::Active, role);
  };
  return readableColor(active(QPalette::Link), active(QPalette::Window),
                       active(QPalette::WindowText));
}

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
  painter.setPen(isEnabled() ? linkColor(palette())
                             : palette().color(QPalette::Disabled, QPalette::WindowText));
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
