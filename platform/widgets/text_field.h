// One line of text that the user edits. Line breaks in what is set or pasted become spaces.

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

  /// False for a text that one may select and copy but not change.
  bool editable() const { return editable_; }
  void setEditable(bool editable) { set(editable_, editable); }

  const Font& font() const { return font_; }
  void setFont(const Font& font) { set(font_, font); }

  // The user.

  bool acceptsFirstResponder() const override { return takesInput(); }

  /// The user has edited the field, so that it would now hold `text`. Does nothing, and the field
  /// keeps its text, while the user can't edit it.
  void type(const std::string& text);

  // Handlers.

  /// After each edit of the user that changed the text.
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
