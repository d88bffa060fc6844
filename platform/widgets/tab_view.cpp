#include "platform/widgets/tab_view.h"

#include "platform/widgets/view_visitor.h"
#include "platform/widgets/window.h"

namespace quillmar {

namespace {

bool isInside(const View* view, const View& container) {
  while (view != nullptr && view != &container) view = view->superview();
  return view != nullptr;
}

}  // namespace

void TabView::accept(ViewVisitor& visitor) {
  visitor.visit(*this);
}

std::vector<View*> TabView::subviews() const {
  std::vector<View*> views;
  views.reserve(tabs_.size());
  for (const Tab& tab : tabs_) views.push_back(tab.content.get());
  return views;
}

void TabView::insert(Tab tab) {
  adopt(*tab.content, this);
  tab.content->setHidden(tabs_.size() != selectedIndex_);
  tabs_.push_back(std::move(tab));
  if (peer() != nullptr) peer()->subviewsChanged();
}

void TabView::setSelectedIndex(std::size_t index) {
  if (index >= tabs_.size() || index == selectedIndex_) return;
  View& previous = *tabs_[selectedIndex_].content;
  selectedIndex_ = index;
  Window* const window = this->window();
  if (window != nullptr && isInside(window->firstResponder(), previous)) {
    window->makeFirstResponder(this);
  }
  previous.setHidden(true);
  tabs_[index].content->setHidden(false);
  if (peer() != nullptr) peer()->viewChanged();
}

bool TabView::key(const KeyPress& press) {
  if (!takesInput() || tabs_.empty()) return false;
  const std::size_t last = tabs_.size() - 1;
  if (press.is(keys::left)) {
    select(selectedIndex_ == 0 ? 0 : selectedIndex_ - 1);
  } else if (press.is(keys::right)) {
    select(selectedIndex_ == last ? last : selectedIndex_ + 1);
  } else if (press.is(keys::home)) {
    select(0);
  } else if (press.is(keys::end)) {
    select(last);
  } else {
    return false;
  }
  return true;
}

bool TabView::performKeyEquivalent(const KeyPress& press) {
  if (!takesInput() || tabs_.size() < 2 || press.modifiers != modifiers::control) return false;
  const std::size_t count = tabs_.size();
  if (press.character == keys::pageUp.character) {
    select((selectedIndex_ + count - 1) % count);
  } else if (press.character == keys::pageDown.character) {
    select((selectedIndex_ + 1) % count);
  } else {
    return false;
  }
  return true;
}

void TabView::select(std::size_t index) {
  const std::size_t before = selectedIndex_;
  if (takesInput()) setSelectedIndex(index);
  // The real widget may already show the rejected tab.
  if (selectedIndex_ != index && peer() != nullptr) peer()->viewChanged();
  if (selectedIndex_ == before || !onSelect_) return;
  // A copy, because the handler may destroy this view.
  const auto onSelect = onSelect_;
  onSelect(index);
}

}  // namespace quillmar
