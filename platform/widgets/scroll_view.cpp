#include "platform/widgets/scroll_view.h"

#include "platform/widgets/view_visitor.h"

namespace quillmar {

ScrollView::ScrollView(std::unique_ptr<View> content) : content_(std::move(content)) {
  adopt(*content_, this);
}

void ScrollView::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

bool ScrollView::key(const KeyPress& press) {
  if (peer() == nullptr || !takesInput()) return false;
  if (press.is(keys::pageUp)) return peer()->scroll(ScrollStep::pageUp);
  if (press.is(keys::pageDown)) return peer()->scroll(ScrollStep::pageDown);
  if (press.is(keys::home)) return peer()->scroll(ScrollStep::beginning);
  if (press.is(keys::end)) return peer()->scroll(ScrollStep::end);
  return false;
}

}  // namespace quillmar
