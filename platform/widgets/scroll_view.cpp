#include "platform/widgets/scroll_view.h"

#include "platform/widgets/view_visitor.h"

namespace quillmar {

ScrollView::ScrollView(std::unique_ptr<View> content) : content_(std::move(content)) {
  adopt(*content_, this);
}

void ScrollView::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

}  // namespace quillmar
