#include "platform/widgets/text_field.h"

#include "platform/widgets/view_visitor.h"

namespace quillmar {

void TextField::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

void TextField::type(const std::string& text) {
  if (!takesInput() || !editable_) {
    // The real field may show the edit already.
    if (text != text_ && peer() != nullptr) peer()->viewChanged();
    return;
  }
  if (text == text_) return;
  setText(text);
  if (!onEdit_) return;
  // A copy: the handler may destroy this field.
  const auto onEdit = onEdit_;
  onEdit(text);
}

}  // namespace quillmar
