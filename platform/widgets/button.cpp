#include "platform/widgets/button.h"

#include "platform/widgets/view_visitor.h"

namespace quillmar {

void Button::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

bool Button::key(const KeyPress& press) {
  if (!press.is(keys::returnKey) && !press.is(keys::space)) return false;
  this->press();
  return true;
}

void Button::press() {
  if (!takesInput() || !onPress_) return;
  // Called on a copy, because the handler may destroy this button.
  const auto onPress = onPress_;
  onPress();
}

}  // namespace quillmar
