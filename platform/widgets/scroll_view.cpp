#include "platform/widgets/scroll_view.h"

#include "platform/widgets/view_visitor.h"

namespace quillmar {

ScrollView::ScrollView(std::unique_ptr<View> content) : content_(std::move(content)) {
  adopt(*content_, this);
}

void ScrollView::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

bool ScrollView::key(const KeyEquivalent& key) {
  if (peer() == nullptr || !takesInput()) return false;
  if (key == keys::pageUp) return peer()->scroll(ScrollStep::pageUp);
  if (key == keys::pageDown) return peer()->scroll(ScrollStep::pageDown);
  if (key == keys::home) return peer()->scroll(ScrollStep::beginning);
  if (key == keys::end) return peer()->scroll(ScrollStep::end);
  return false;
}

}  // namespace quillmar
