#include "platform/widgets/checkbox.h"

#include "platform/widgets/view_visitor.h"

namespace quillmar {

void Checkbox::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

bool Checkbox::key(const KeyPress& press) {
  if (!press.is(keys::space)) return false;
  toggle();
  return true;
}

void Checkbox::toggle() {
  if (!takesInput()) {
    // The real widget may already show the rejected state.
    if (peer() != nullptr) peer()->viewChanged();
    return;
  }
  setState(toggled(state_));
  // Copies, because the handler may destroy this checkbox.
  const auto onToggle = onToggle_;
  if (onToggle) onToggle(state_);
}

}  // namespace quillmar
