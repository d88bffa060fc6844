// A button that shows one of several titles and opens a menu to choose another.

#pragma once

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "platform/widgets/type_ahead.h"
#include "platform/widgets/view.h"

namespace quillmar {

class PopUpButton final : public View {
 public:
  /// Selects the first title, if there is one.
  explicit PopUpButton(std::vector<std::string> titles);

  void accept(ViewVisitor& visitor) override;

  // State to show.

  /// Plain texts: no mnemonics. Fixed at construction.
  const std::vector<std::string>& titles() const { return titles_; }

  /// Absent if no title is selected.
  std::optional<std::size_t> selectedIndex() const { return selectedIndex_; }
  /// Ignores an index that has no title.
  void setSelectedIndex(std::optional<std::size_t> index);

  /// Empty if no title is selected.
  std::string selectedTitle() const { return selectedIndex_ ? titles_[*selectedIndex_] : ""; }

  // Events from the user.

  bool acceptsFirstResponder() const override { return takesInput(); }

  /// The arrow keys, Home and End select another title, and so does typing its beginning. Real
  /// widgets also open their menu with a key.
  bool key(const KeyPress& press) override;

  void select(std::size_t index);

  // Callbacks.

  /// Called after the user has selected another title.
  void setOnSelect(std::function<void(std::size_t index)> onSelect) {
    onSelect_ = std::move(onSelect);
  }

 private:
  /// The title that the key selects; the selected one if it selects no other. Absent if the key has
  /// no meaning.
  std::optional<std::size_t> indexFor(const KeyPress& press);

  std::vector<std::string> titles_;
  std::optional<std::size_t> selectedIndex_;
  TypeAhead typeAhead_;
  std::function<void(std::size_t)> onSelect_;
};

}  // namespace quillmar
