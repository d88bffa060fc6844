#include "platform/widgets/pop_up_button.h"

#include <algorithm>

#include "platform/widgets/view_visitor.h"

namespace quillmar {

PopUpButton::PopUpButton(std::vector<std::string> titles) : titles_(std::move(titles)) {
  if (!titles_.empty()) selectedIndex_ = 0;
}

void PopUpButton::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

void PopUpButton::setSelectedIndex(std::optional<std::size_t> index) {
  if (!index || *index < titles_.size()) set(selectedIndex_, index);
}

bool PopUpButton::key(const KeyPress& press) {
  if (!takesInput() || titles_.empty()) return false;
  const auto index = indexFor(press);
  if (!index) return false;
  select(*index);
  return true;
}

std::optional<std::size_t> PopUpButton::indexFor(const KeyPress& press) {
  const std::size_t last = titles_.size() - 1;
  const std::size_t at = selectedIndex_.value_or(0);
  if (press.is(keys::down)) return selectedIndex_ ? std::min(at + 1, last) : 0;
  if (press.is(keys::up)) return at == 0 ? 0 : at - 1;
  if (press.is(keys::home)) return 0;
  if (press.is(keys::end)) return last;
  const auto now = TypeAhead::Clock::now();
  if (!typeAhead_.isSearched(press, now)) return std::nullopt;
  const auto found = typeAhead_.find(
      press.character, titles_.size(), selectedIndex_, [this](std::size_t i) { return titles_[i]; },
      now);
  return found ? found : selectedIndex_;
}

void PopUpButton::select(std::size_t index) {
  const std::optional<std::size_t> before = selectedIndex_;
  if (takesInput()) setSelectedIndex(index);
  // The real widget may already show the rejected title.
  if (selectedIndex_ != index && peer() != nullptr) peer()->viewChanged();
  if (selectedIndex_ == before || !onSelect_) return;
  // A copy, because the handler may destroy this button.
  const auto onSelect = onSelect_;
  onSelect(index);
}

}  // namespace quillmar
