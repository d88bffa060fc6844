// Several lines of editable plain text. The lines wrap, and the view scrolls vertically.

#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "platform/font.h"
#include "platform/widgets/view.h"

namespace quillmar {

class TextView final : public View {
 public:
  void accept(ViewVisitor& visitor) override;

  // State to show.

  /// Lines end with a line feed. A carriage return, with or without a line feed, and U+2029 in set
  /// or pasted text become one, unless the view shows invisible characters.
  const std::string& text() const { return text_; }
  void setText(std::string_view text);

  /// If false, the user can select and copy the text but not change it.
  bool editable() const { return editable_; }
  void setEditable(bool editable) { set(editable_, editable); }

  /// If true, each invisible character is shown as its code point (text::withVisibleCharacters()).
  /// Copied text contains the character itself. A bar marks each line that continues a wrapped one.
  /// For views that are not editable. Set it before the text.
  bool showsInvisibleCharacters() const { return showsInvisibleCharacters_; }
  void setShowsInvisibleCharacters(bool shows) { set(showsInvisibleCharacters_, shows); }

  const Font& font() const { return font_; }
  void setFont(const Font& font) { set(font_, font); }

  /// The space between the border and the text on each side; absent for the desktop's default.
  std::optional<double> inset() const { return inset_; }
  void setInset(std::optional<double> inset) { set(inset_, inset); }

  // Events from the user.

  bool acceptsFirstResponder() const override { return takesInput(); }

  /// Return begins a new line. Tab is not used, so that it moves the focus.
  bool key(const KeyPress& press) override;

  /// The user edited the text, which would become `text`. If the view does not accept input or is
  /// not editable, it keeps its text.
  void type(std::string_view text);

  // Callbacks.

  /// Called after each edit by the user that changed the text.
  void setOnEdit(std::function<void(const std::string& text)> onEdit) {
    onEdit_ = std::move(onEdit);
  }

 private:
  std::string text_;
  bool editable_ = true;
  bool showsInvisibleCharacters_ = false;
  Font font_;
  std::optional<double> inset_;
  std::function<void(const std::string&)> onEdit_;
};

}  // namespace quillmar
