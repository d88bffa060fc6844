#include "platform/widgets/custom_view.h"

#include "platform/widgets/view_visitor.h"

namespace quillmar {

void CustomView::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

void CustomView::mouseDown() {
  if (takesInput()) handleMouseDown();
}

bool CustomView::key(const KeyPress& press) {
  if (!press.is(keys::space) || accessibilityRole() != AccessibilityRole::button) return false;
  mouseDown();
  return true;
}

void CustomView::redraw() const {
  if (peer() != nullptr) peer()->viewChanged();
}

}  // namespace quillmar
