#include "platform/widgets/image_view.h"

#include "platform/widgets/view_visitor.h"

namespace quillmar {

void ImageView::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

}  // namespace quillmar
