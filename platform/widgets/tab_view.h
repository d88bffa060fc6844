// A row of tabs and, below it, the content of the selected one.

#pragma once

#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/widgets/view.h"

namespace quillmar {

class TabView final : public View {
 public:
  struct Tab {
    std::string identifier;
    /// Plain text: no mnemonics.
    std::string label;
    /// Hidden unless the tab is selected.
    std::unique_ptr<View> content;
  };

  void accept(ViewVisitor& visitor) override;
  std::vector<View*> subviews() const override;

  const std::vector<Tab>& tabs() const { return tabs_; }

  /// Creates the content of a new tab. The first tab is selected.
  template <class Kind, class... Arguments>
  Kind& addTab(std::string identifier, std::string label, Arguments&&... arguments) {
    auto content = std::make_unique<Kind>(std::forward<Arguments>(arguments)...);
    Kind& added = *content;
    insert({std::move(identifier), std::move(label), std::move(content)});
    return added;
  }

  std::size_t selectedIndex() const { return selectedIndex_; }
  /// Ignores an index without a tab. If the first responder is in the content that is hidden, the
  /// tab view becomes the first responder.
  void setSelectedIndex(std::size_t index);

  // Events from the user.

  /// The focus is on the row of tabs.
  bool acceptsFirstResponder() const override { return takesInput() && tabs_.size() > 1; }

  /// Left, Right, Home and End select another tab.
  bool key(const KeyPress& press) override;

  /// Control with Page Up or Page Down selects another tab, wherever the focus is in the window.
  bool performKeyEquivalent(const KeyPress& press) override;

  void select(std::size_t index);

  // Callbacks.

  /// Called after the user has selected another tab.
  void setOnSelect(std::function<void(std::size_t index)> onSelect) {
    onSelect_ = std::move(onSelect);
  }

 private:
  void insert(Tab tab);

  std::vector<Tab> tabs_;
  std::size_t selectedIndex_ = 0;
  std::function<void(std::size_t)> onSelect_;
};

}  // namespace quillmar
