// An editable line of text. Line breaks in set or pasted text become spaces.

#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/font.h"
#include "platform/text.h"
#include "platform/widgets/view.h"

namespace quillmar {

class TextField final : public View {
 public:
  void accept(ViewVisitor& visitor) override;

  // State to show.

  const std::string& text() const { return text_; }
  void setText(std::string_view text) { set(text_, text::onOneLine(text)); }

  /// Shown while the field is empty.
  const std::string& placeholder() const { return placeholder_; }
  void setPlaceholder(std::string placeholder) { set(placeholder_, std::move(placeholder)); }

  /// If false, the user can select and copy the text but not change it.
  bool editable() const { return editable_; }
  void setEditable(bool editable) { set(editable_, editable); }

  const Font& font() const { return font_; }
  void setFont(const Font& font) { set(font_, font); }

  // Events from the user.

  bool acceptsFirstResponder() const override { return takesInput(); }

  /// The user edited the field and its text would become `text`. If the field does not accept input
  /// or is not editable, it keeps its text.
  void type(const std::string& text);

  // Callbacks.

  /// Called after each edit by the user that changed the text.
  void setOnEdit(std::function<void(const std::string& text)> onEdit) {
    onEdit_ = std::move(onEdit);
  }

 private:
  std::string text_;
  std::string placeholder_;
  bool editable_ = true;
  Font font_;
  std::function<void(const std::string&)> onEdit_;
};

}  // namespace quillmar
