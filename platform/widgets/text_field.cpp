#include "platform/widgets/text_field.h"

#include "platform/widgets/view_visitor.h"

namespace quillmar {

void TextField::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

void TextField::type(const std::string& text) {
  const std::string before = text_;
  if (takesInput() && editable_) setText(text);
  // The real field may already show the rejected text.
  if (text != text_ && peer() != nullptr) peer()->viewChanged();
  if (text_ == before || !onEdit_) return;
  // Copies, because the handler may destroy this field.
  const auto onEdit = onEdit_;
  const std::string edited = text_;
  onEdit(edited);
}

}  // namespace quillmar
