#include "platform/widgets/label.h"

#include "platform/widgets/view_visitor.h"

namespace quillmar {

void Label::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

}  // namespace quillmar
