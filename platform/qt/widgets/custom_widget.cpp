#include "platform/qt/widgets/custom_widget.h"

#include <QAccessible>
#include <QMouseEvent>
#include <utility>

namespace quillmar {

CustomWidget::CustomWidget(Handlers handlers, QWidget* parent)
    : QWidget(parent), handlers_(std::move(handlers)) {
  setFocusPolicy(Qt::StrongFocus);
}

void CustomWidget::press() {
  // Called on a copy, because the handler may destroy the view.
  const auto mouseDown = handlers_.mouseDown;
  if (mouseDown) mouseDown();
}

void CustomWidget::setAccessibleState(const QString& value, bool isPressed) {
  if (std::exchange(value_, value) != value) {
    QAccessibleEvent changed(this, QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&changed);
  }
  if (std::exchange(isPressed_, isPressed) != isPressed) {
    QAccessible::State state;
    state.pressed = true;
    QAccessibleStateChangeEvent changed(this, state);
    QAccessible::updateAccessibility(&changed);
  }
}

void CustomWidget::paintEvent(QPaintEvent* /*event*/) {
  if (handlers_.paint) handlers_.paint(*this);
}

void CustomWidget::mousePressEvent(QMouseEvent* event) {
  // Also called for the second press of a double click.
  if (event->button() == Qt::LeftButton) {
    press();
  } else {
    QWidget::mousePressEvent(event);
  }
}

void CustomWidget::focusInEvent(QFocusEvent* event) {
  QWidget::focusInEvent(event);
  update();
}

void CustomWidget::focusOutEvent(QFocusEvent* event) {
  QWidget::focusOutEvent(event);
  update();
}

}  // namespace quillmar
