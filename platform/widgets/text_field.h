// An editable line of text. Line breaks in set or pasted text become spaces.
//
// A field can offer completions. A list of them opens when the user edits the text while the field
// is the first responder, and follows each further edit. It closes when the user accepts a
// completion, presses Escape, clicks elsewhere or leaves the field, and when the program changes
// the text. The keyboard focus stays in the field. Only accepting a completion changes the text.

#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/font.h"
#include "platform/image.h"
#include "platform/widgets/view.h"

namespace quillmar {

/// A text that may replace the text of a field.
struct TextCompletion {
  std::string text;
  /// Shown before the text.
  std::optional<Image> image;

  bool operator==(const TextCompletion&) const = default;
};

class TextField final : public View {
 public:
  /// Returns the completions of a text that the user has typed, the best first.
  using Completions = std::function<std::vector<TextCompletion>(const std::string& typed)>;

  /// The list of completions shows so many at once; the others are reached by scrolling.
  static constexpr std::size_t completionsPerPage = 8;

  void accept(ViewVisitor& visitor) override;

  // State to show.

  const std::string& text() const { return text_; }
  void setText(std::string_view text);

  /// Shown while the field is empty.
  const std::string& placeholder() const { return placeholder_; }
  void setPlaceholder(std::string placeholder) { set(placeholder_, std::move(placeholder)); }

  /// If false, the user can select and copy the text but not change it.
  bool editable() const { return editable_; }
  void setEditable(bool editable);

  const Font& font() const { return font_; }
  void setFont(const Font& font) { set(font_, font); }

  /// Called after each edit by the user; must not change the field. Empty for a field that offers
  /// no completions.
  void setCompletions(Completions completions);

  /// The list of completions; empty if it is closed.
  const std::vector<TextCompletion>& completions() const { return completions_; }
  /// Absent if none is selected, as after each edit.
  std::optional<std::size_t> selectedCompletion() const { return selectedCompletion_; }

  // Events from the user.

  bool acceptsFirstResponder() const override { return takesInput(); }

  /// While the list of completions is open: Up, Down and the page keys select one, Return and Tab
  /// accept the selected one, and Escape closes the list.
  bool key(const KeyPress& press) override;

  /// The user edited the field and its text would become `text`. If the field does not accept input
  /// or is not editable, it keeps its text.
  void type(const std::string& text);

  /// The user chose the completion with that index in the list: the list closes, and the text of
  /// the completion replaces the text of the field, as if typed. Does nothing if there is none.
  void acceptCompletion(std::size_t index);

  /// The user closed the list, for example by a click elsewhere.
  void closeCompletions() { showCompletions({}); }

  void focusLost() override { closeCompletions(); }

  // Callbacks.

  /// Called after each edit by the user that changed the text.
  void setOnEdit(std::function<void(const std::string& text)> onEdit) {
    onEdit_ = std::move(onEdit);
  }

 private:
  /// False if the text stays the same.
  bool change(const std::string& text);
  /// May destroy the field.
  void reportEdit();
  void showCompletions(std::vector<TextCompletion> completions);
  /// The selection that the key leads to from the present one, which may be none.
  std::optional<std::size_t> selectionAfter(const KeyPress& press) const;
  bool isFirstResponder() const;

  std::string text_;
  std::string placeholder_;
  bool editable_ = true;
  Font font_;
  Completions findCompletions_;
  std::vector<TextCompletion> completions_;
  std::optional<std::size_t> selectedCompletion_;
  std::function<void(const std::string&)> onEdit_;
};

}  // namespace quillmar
